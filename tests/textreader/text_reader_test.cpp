#include "reader_fixture.h"

#include <gtest/gtest.h>

namespace voxtrel::textreader {
namespace {

using tests::ReadingRoom;

constexpr std::int32_t kRed = 0x0000FF;
constexpr std::int32_t kBlue = 0xFF0000;

TEST(TextReader, SentenceIsColouredAndSpokenAsOneUtterance)
{
    ReadingRoom room(L"One two. Three four.");
    room.reader.SelectCurrentSentence();
    EXPECT_EQ(room.box.Shown(kBlue), L"One two.............");
    ASSERT_EQ(room.character.utterances.size(), 1u);
    EXPECT_EQ(room.LastBookmarks(), (std::vector<std::int32_t>{300001, 400005}));
    EXPECT_EQ(room.log.Calls().front(), L"StopAll");
    EXPECT_EQ(room.window.busyCount, 1);
    EXPECT_FALSE(room.window.busy);
}

TEST(TextReader, WordsTurnRedAsTheyAreHeard)
{
    ReadingRoom room(L"One two. Three four.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(300001);
    EXPECT_EQ(room.box.Shown(kRed), L"One.................");
    EXPECT_EQ(room.box.Selected(), L"One");
    room.reader.agent1_Bookmark(400005);
    EXPECT_EQ(room.box.Shown(kRed), L"One.two.............");
    EXPECT_EQ(room.box.Selected(), L"two.");
    EXPECT_EQ(room.reader.BookmarkID, 400005);
}

TEST(TextReader, ReadingAllTurnsTheWordBeforeBackToTheSectionsColour)
{
    ReadingRoom room(L"One two. Three four.");
    room.reader.speakWindowText();
    room.reader.agent1_Bookmark(300001);
    room.reader.agent1_Bookmark(400005);
    EXPECT_EQ(room.box.Shown(kRed), L"....two.............");
    EXPECT_EQ(room.box.Shown(kBlue), L"One .... Three four.");
    EXPECT_EQ(room.box.Coloured(), 20);
}

TEST(TextReader, BlockHighlightShowsTheWordInBlackInTheBlock)
{
    ReadingRoom room(L"One two.");
    room.window.blockHighlight = true;
    room.reader.speakWindowText();
    EXPECT_EQ(room.window.hiddenFocused, 0);
    room.reader.agent1_Bookmark(300001);
    EXPECT_EQ(room.window.activated, 1);
    EXPECT_EQ(room.box.Shown(kBlack), L"One.....");
}

TEST(TextReader, SectionEndTakesEveryColourAway)
{
    ReadingRoom room(L"Hello. Yes.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(600001); // the word reaches one character past the section
    EXPECT_EQ(room.box.Coloured(), 6);
    room.reader.agent1_Bookmark(kEndOfSection);
    EXPECT_EQ(room.box.Coloured(), 0);
    EXPECT_EQ(room.box.SelStart(), 0);
    EXPECT_EQ(room.box.Selected(), L"Hello."); // the part that was read
}

TEST(TextReader, NavigationTakesTheHighlightBeforeAway)
{
    ReadingRoom room(L"Hello. Yes. No.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(600001);
    room.reader.SelectNextSentence();
    EXPECT_EQ(room.box.Shown(kBlue), L"...... Yes.....");
    EXPECT_EQ(room.box.Coloured(), 5);
    EXPECT_FALSE(room.box.sawNegativeStart);
}

TEST(TextReader, WholeTextIsReadFromItsFirstCharacterAndQueuesTheEndMarks)
{
    ReadingRoom room(L"Go on.");
    room.reader.speakWindowText();
    ASSERT_EQ(room.character.utterances.size(), 2u);
    EXPECT_EQ(tests::BookmarksOf(room.character.utterances[0]), (std::vector<std::int32_t>{200001, 300004}));
    EXPECT_EQ(room.character.utterances[1], L" \\Mrk=999999999\\ ");
    EXPECT_EQ(room.reader.startpos, 0);
    EXPECT_EQ(room.reader.strlength, 6);
    EXPECT_FALSE(room.reader.closeTheWindow);
    EXPECT_EQ(room.window.hiddenFocused, 1);
}

TEST(TextReader, NavigationFromTheWholeTextBeginsAtTheWordHeard)
{
    ReadingRoom room(L"One two. Three four. Five six. Seven.");
    room.reader.speakWindowText();
    for (const std::int32_t number : {300001, 400005, 500010})
        room.reader.agent1_Bookmark(number);
    room.reader.PrepareNavigation();
    room.reader.SelectNextSentence();
    EXPECT_EQ(room.Section(), L" Five six.");
    room.reader.speakWindowText();
    for (const std::int32_t number : {300001, 400005, 500010})
        room.reader.agent1_Bookmark(number);
    room.reader.SelectPreviousWord();
    EXPECT_EQ(room.Section(), L"two.");
    room.reader.speakWindowText();
    room.reader.SelectNextSentence();
    EXPECT_EQ(room.reader.startpos, 0);
    EXPECT_EQ(room.reader.strlength, 7);
}

TEST(TextReader, AutoCloseQueuesTheMarkThatClosesTheWindow)
{
    ReadingRoom room(L"Go on.");
    room.window.autoClose = true;
    room.reader.speakWindowText();
    EXPECT_TRUE(room.reader.closeTheWindow);
    ASSERT_EQ(room.character.utterances.size(), 3u);
    EXPECT_EQ(room.character.utterances[2], L" \\Mrk=88888888\\ ");
    room.reader.agent1_Bookmark(kEndOfText);
    EXPECT_EQ(room.window.closed, 1);
    EXPECT_EQ(room.log.Calls().back(), L"StopAll");
}

TEST(TextReader, AutoCloseStillHappensAfterAPause)
{
    ReadingRoom room(L"Go on and on.");
    room.window.autoClose = true;
    room.reader.speakWindowText();
    room.reader.agent1_Bookmark(200001);
    room.reader.PauseSpeech();
    room.reader.ResumeSpeech();
    EXPECT_EQ(room.character.utterances.back(), L" \\Mrk=88888888\\ ");
}

TEST(TextReader, ResumeReadsTheInterruptedWordAgain)
{
    ReadingRoom room(L"One two three four.");
    room.reader.SelectCurrentSentence();
    for (const std::int32_t number : {300001, 300005, 500009})
        room.reader.agent1_Bookmark(number);
    room.reader.PauseSpeech();
    const std::int64_t coloured = room.box.Coloured();
    EXPECT_EQ(room.log.Calls().back(), L"StopAll");
    room.reader.ResumeSpeech();
    EXPECT_EQ(room.box.Coloured(), coloured); // the highlight is where it was
    // As far as the section goes: its end mark lies one character past it.
    EXPECT_EQ(room.LastBookmarks(), (std::vector<std::int32_t>{500009, 400015}));
    room.reader.agent1_Bookmark(500009);
    room.reader.agent1_Bookmark(400015);
    EXPECT_EQ(room.box.Shown(kRed), L"One.two.......four.");
    room.reader.agent1_Bookmark(kEndOfSection);
    EXPECT_EQ(room.box.Coloured(), 0);
}

TEST(TextReader, PauseAtTheEndLeavesNothingToResume)
{
    ReadingRoom room(L"One two.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(300001);
    room.reader.agent1_Bookmark(400005);
    room.reader.agent1_Bookmark(kEndOfSection);
    room.reader.PauseSpeech();
    const std::size_t spoken = room.character.utterances.size();
    room.reader.ResumeSpeech();
    EXPECT_EQ(room.character.utterances.size(), spoken);
    EXPECT_EQ(room.box.Coloured(), 0);
}

TEST(TextReader, ResumeOnTheLastWordOfAWordSectionTurnsItBlack)
{
    ReadingRoom room(L"x one two");
    room.box.SetSelStart(3);
    room.reader.SelectCurrentWord();
    room.reader.agent1_Bookmark(300003);
    room.reader.agent1_Bookmark(300003); // unknown by now, but it makes the first one the last
    room.reader.PauseSpeech();
    const std::size_t spoken = room.character.utterances.size();
    room.reader.ResumeSpeech();
    EXPECT_EQ(room.character.utterances.size(), spoken);
    EXPECT_EQ(room.box.Coloured(), 0);
}

TEST(TextReader, ResumeWithoutAUsableMarkReadsTheSectionFromItsStart)
{
    ReadingRoom room(L"One two. Three four.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(300001);
    room.reader.agent1_Bookmark(400005);
    room.reader.SelectNextSentence();
    room.reader.agent1_Bookmark(500010); // the mark behind it is of the first sentence
    room.reader.PauseSpeech();
    room.reader.ResumeSpeech();
    EXPECT_EQ(room.LastBookmarks(), (std::vector<std::int32_t>{500010, 500016}));
    EXPECT_EQ(room.box.Shown(kBlue).substr(0, 8), L"........");
}

TEST(TextReader, NavigationAfterAPauseColoursTheNewSection)
{
    ReadingRoom room(L"One two. Three four.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(300001);
    room.reader.PauseSpeech();
    room.reader.ResetToBlack();
    room.reader.SelectNextSentence();
    EXPECT_EQ(room.box.Shown(kBlue), L"........ Three four.");
}

TEST(TextReader, PreviousParagraphSwallowsTheNextEndMarkOnce)
{
    ReadingRoom room(L"One.\r\nTwo.\r\nThree.");
    room.box.SetSelStart(8);
    room.reader.SelectPreviousParagraph();
    room.reader.agent1_Bookmark(kEndOfSection);
    EXPECT_EQ(room.box.Coloured(), 0);
    EXPECT_EQ(room.box.SelLength(), room.reader.strlength); // nothing recomputed
}

TEST(TextReader, ResetToBlackSilencesAndPutsTheCaretToTheSectionsStart)
{
    ReadingRoom room(L"One two. Three four.");
    room.box.SetSelStart(12);
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(500010);
    room.reader.ResetToBlack();
    EXPECT_EQ(room.log.Calls().back(), L"StopAll");
    EXPECT_EQ(room.box.Coloured(), 0);
    EXPECT_EQ(room.box.SelStart(), 8);
    EXPECT_EQ(room.box.SelLength(), 0);
}

TEST(TextReader, ResetToBlackLeavesACaretThatTheUserHasPlaced)
{
    ReadingRoom room(L"One two. Three four. Five.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(300001);
    room.box.SetSelStart(23);
    room.reader.agent1_Bookmark(400005); // the highlight goes on meanwhile
    room.reader.ResetToBlack();
    EXPECT_EQ(room.box.SelStart(), 23);
    room.reader.SelectCurrentSentence();
    EXPECT_EQ(room.Section(), L" Five.");
}

TEST(TextReader, EmptyTextDoesNothingInAnyMode)
{
    using Operation = void (TextReader::*)();
    for (const Operation select :
         {&TextReader::SelectCurrentWord, &TextReader::SelectCurrentSentence,
          &TextReader::SelectCurrentParagraph, &TextReader::SelectNextWord, &TextReader::SelectNextSentence,
          &TextReader::SelectNextParagraph, &TextReader::SelectPreviousWord,
          &TextReader::SelectPreviousSentence, &TextReader::SelectPreviousParagraph}) {
        ReadingRoom room(L"");
        (room.reader.*select)();
        EXPECT_TRUE(room.character.utterances.empty());
        EXPECT_EQ(room.reader.startpos, 0);
        EXPECT_EQ(room.reader.strlength, 0);
    }
}

TEST(TextReader, WithoutACharacterTheHighlightStillMoves)
{
    ReadingRoom room(L"One two. Three.");
    room.shared.character = nullptr;
    room.reader.SelectCurrentSentence();
    EXPECT_EQ(room.box.Shown(kBlue), L"One two........");
}

TEST(TextReader, BookmarkThatIsNoneOfTheUtteranceMovesNothing)
{
    ReadingRoom room(L"One two. Three.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(300009);
    EXPECT_EQ(room.box.Shown(kRed), L"...............");
    EXPECT_EQ(room.reader.BookmarkID, 0);
}

TEST(TextReader, SelectionIsSpokenAndWithoutOneTheTextFromTheCaretOn)
{
    ReadingRoom room(L"One two three.");
    room.box.SetSelStart(4);
    room.box.SetSelLength(3);
    room.reader.SpeakSelection();
    EXPECT_EQ(room.LastBookmarks(), (std::vector<std::int32_t>{300005}));
    room.reader.ResetToBlack();
    room.box.SetSelStart(8);
    room.reader.SpeakSelection();
    EXPECT_EQ(room.LastBookmarks(), (std::vector<std::int32_t>{600009}));
    EXPECT_EQ(room.box.Shown(kBlue), L"........three.");
}

TEST(TextReader, EveryWordOfALongTextIsHighlightedInItsPlace)
{
    std::wstring text;
    for (int i = 0; text.size() < 300000; ++i)
        text += L"word" + std::to_wstring(i % 977) + (i % 11 == 0 ? L".\r\n" : L" ");
    ReadingRoom room(text);
    room.reader.speakWindowText();
    std::size_t wrong = 0;
    std::size_t at = 0;
    for (const std::int32_t number : tests::BookmarksOf(room.character.utterances[0])) {
        at = text.find(L"word", at);
        room.reader.agent1_Bookmark(number);
        const std::size_t end = text.find_first_of(L" \n", at);
        // From position 50000 up to 99999 the number itself says one character more.
        const bool rounded = at + 1 >= 50000 && at + 1 < 100000;
        if (room.box.Selected() != text.substr(at, end - at + (rounded ? 1 : 0)))
            ++wrong;
        at = end;
    }
    // Halves go to the even neighbour: a word of even length at exactly 50000 would be the one exception.
    EXPECT_EQ(wrong, 0u);
    EXPECT_EQ(text.find(L"word", at), std::wstring::npos);
    EXPECT_EQ(room.box.Coloured(), static_cast<std::int64_t>(text.size()));
}

TEST(TextReader, LongTextResumesAtTheTrueWord)
{
    std::wstring text(120000, L'a');
    for (std::size_t i = 7; i < text.size(); i += 8)
        text[i] = L' ';
    ReadingRoom room(text);
    room.reader.speakWindowText();
    const std::vector<std::int32_t> numbers = tests::BookmarksOf(room.character.utterances[0]);
    for (std::size_t i = 0; i <= 14000; ++i)
        room.reader.agent1_Bookmark(numbers[i]);
    room.reader.PauseSpeech();
    room.reader.ResumeSpeech();
    ASSERT_FALSE(room.LastBookmarks().empty());
    room.reader.agent1_Bookmark(room.LastBookmarks().front());
    EXPECT_EQ(room.box.SelStart(), 14000 * 8);
    EXPECT_EQ(room.box.SelLength(), 7);
}

TEST(TextReader, EditsWhileReadingMoveTheHighlightAlong)
{
    ReadingRoom room(L"One two three. Four.");
    room.reader.SelectCurrentSentence();
    room.reader.agent1_Bookmark(300001);
    room.Edit(0, 0, L"Well, ");
    room.Edit(room.box.Text().size() - 5, 5, L"");
    room.reader.agent1_Bookmark(300005);
    EXPECT_EQ(room.box.Selected(), L"two");
    room.Edit(10, 3, L""); // the word being heard goes
    room.reader.agent1_Bookmark(600009);
    EXPECT_EQ(room.box.Selected(), L"three.");
    room.reader.agent1_Bookmark(kEndOfSection);
    EXPECT_EQ(room.box.Coloured(), 0);
}

TEST(TextReader, NewTextWhileReadingLeavesNothingOfTheOldSection)
{
    ReadingRoom room(L"One two three. Four.");
    room.box.SetSelStart(17);
    room.reader.SelectCurrentSentence();
    room.Edit(0, static_cast<std::int32_t>(room.box.Text().size()), L"Quite another text. And more.");
    EXPECT_EQ(room.reader.startpos, 0);
    EXPECT_EQ(room.reader.strlength, 0);
    room.reader.SelectNextSentence();
    EXPECT_EQ(room.reader.startpos, 0);
    EXPECT_EQ(room.reader.strlength, 18);
}

TEST(TextReader, NavigationPaintsTheSectionsNotTheText)
{
    std::wstring text;
    while (text.size() < 200000)
        text += L"A sentence of some words. ";
    ReadingRoom room(text);
    room.box.SetSelStart(100000);
    room.reader.SelectCurrentSentence();
    room.box.painted = 0;
    for (int i = 0; i < 10; ++i)
        room.reader.SelectNextSentence();
    EXPECT_LT(room.box.painted, 10 * 100);
}

struct MovedCase {
    TextRange range;
    TextEdit edit;
    TextRange expected;
};

constexpr MovedCase kMovedCases[] = {
    {{5, 9}, {0, 0, 3}, {8, 12}}, // before
    {{5, 9}, {5, 0, 3}, {8, 12}}, // at its beginning
    {{5, 9}, {7, 0, 3}, {5, 12}}, // inside
    {{5, 9}, {9, 0, 3}, {5, 9}},  // at its end
    {{5, 9}, {20, 2, 3}, {5, 9}}, // behind
    {{5, 9}, {0, 5, 0}, {0, 4}},  // just before it
    {{5, 9}, {5, 4, 7}, {5, 5}},  // all of it
    {{5, 9}, {3, 10, 0}, {3, 3}}, // more than it
    {{5, 9}, {3, 4, 1}, {4, 6}},  // its beginning
    {{5, 9}, {7, 4, 1}, {5, 7}},  // its end
    {{5, 5}, {5, 0, 3}, {5, 5}},  // an empty one
    {{5, 9}, {6, 2, 0}, {5, 7}},  // from its middle
};

TEST(MovedRange, FollowsTheText)
{
    for (const MovedCase& row : kMovedCases) {
        SCOPED_TRACE(testing::Message()
                     << row.edit.position << " -" << row.edit.removed << " +" << row.edit.added);
        EXPECT_EQ(Moved(row.range, row.edit).begin, row.expected.begin);
        EXPECT_EQ(Moved(row.range, row.edit).end, row.expected.end);
    }
}

} // namespace
} // namespace voxtrel::textreader
