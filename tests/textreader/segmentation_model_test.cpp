// The program against the model, on thousands of random texts and sequences of operations.

#include "random_text.h"
#include "reader_fixture.h"
#include "segmentation_model.h"

#include <gtest/gtest.h>

namespace voxtrel::textreader {
namespace {

using tests::ModelBody;
using tests::RandomTexts;
using tests::ReadingRoom;
using tests::SegmentationModel;
using tests::Span;

std::string Narrow(const std::wstring& text)
{
    std::string shown;
    for (const wchar_t c : text) {
        if (c == L'\r')
            shown += "\\r";
        else if (c == L'\n')
            shown += "\\n";
        else
            shown += c < 128 ? static_cast<char>(c) : '~';
    }
    return shown;
}

void Expect(const SegmentationModel& model, const std::optional<Section>& section)
{
    if (!section)
        return;
    EXPECT_EQ(section->scanStart, model.scanStart);
    EXPECT_EQ(section->scanEnd, model.scanEnd);
    EXPECT_EQ(section->startpos, model.startpos);
    EXPECT_EQ(section->strlength, model.strlength);
    EXPECT_FALSE(model.ranAway);
}

TEST(SegmentationModelTest, EveryCaretGivesTheSectionOfTheRules)
{
    RandomTexts texts(20240611);
    for (int round = 0; round < 3000; ++round) {
        const std::wstring text = texts.Next(14);
        SCOPED_TRACE(Narrow(text));
        for (std::int32_t caret = 0; caret <= static_cast<std::int32_t>(text.size()); ++caret) {
            SCOPED_TRACE(caret);
            for (const std::int32_t old : {0, 1, 2, 9}) {
                SegmentationModel model(text, caret);
                model.scanStart = old;
                model.CurrentSentence();
                Expect(model, CurrentSentence(text, caret, old));
            }
            SegmentationModel word{text, caret};
            word.CurrentWord();
            Expect(word, CurrentWord(text, caret));
            SegmentationModel paragraph{text, caret};
            paragraph.CurrentParagraph();
            Expect(paragraph, CurrentParagraph(text, caret));
            SegmentationModel before{text, caret};
            before.PreviousParagraph();
            Expect(before, PreviousParagraph(text, caret));
            SegmentationModel after{text, caret, caret, static_cast<std::int32_t>(texts.Below(5))};
            const std::int32_t length = after.strlength;
            after.NextParagraph();
            Expect(after, NextParagraph(text, caret, length));
            if (testing::Test::HasFailure())
                return;
        }
    }
}

TEST(SegmentationModelTest, SequencesOfOperationsKeepToTheRules)
{
    using Operation = std::pair<void (TextReader::*)(), void (SegmentationModel::*)()>;
    const Operation operations[] = {
        {&TextReader::SelectCurrentSentence, &SegmentationModel::CurrentSentence},
        {&TextReader::SelectCurrentParagraph, &SegmentationModel::CurrentParagraph},
        {&TextReader::SelectNextParagraph, &SegmentationModel::NextParagraph},
        {&TextReader::SelectPreviousParagraph, &SegmentationModel::PreviousParagraph},
        {&TextReader::SelectCurrentWord, &SegmentationModel::CurrentWord}};
    RandomTexts texts(77);
    for (int round = 0; round < 2000; ++round) {
        const std::wstring text = texts.Next(30);
        SCOPED_TRACE(Narrow(text));
        ReadingRoom room(text);
        SegmentationModel model{text};
        for (int i = 0; i < 12; ++i) {
            if (texts.Below(3) == 0) {
                const auto caret = static_cast<std::int32_t>(texts.Below(text.size() + 1));
                room.box.SetSelStart(caret);
            }
            model.selStart = room.box.SelStart();
            const auto& [select, rule] = operations[texts.Below(std::size(operations))];
            (room.reader.*select)();
            (model.*rule)();
            ASSERT_FALSE(model.ranAway);
            ASSERT_EQ(room.reader.startpos, model.startpos);
            ASSERT_EQ(room.reader.strlength, model.strlength);
            ASSERT_FALSE(room.box.sawNegativeStart);
            ASSERT_LE(room.box.Coloured(), std::max(model.strlength, 0));
        }
        room.reader.ResetToBlack();
        ASSERT_EQ(room.box.Coloured(), 0);
    }
}

TEST(SegmentationModelTest, MarkupIsThatOfTheRules)
{
    RandomTexts texts(4711);
    const std::map<std::wstring, std::wstring> modify = {{L"word", L"wurd"},  {L"-", L" minus "},
                                                         {L"7", L"never"},    {L"I", L"eye"},
                                                         {L"Dr.", L"doctor"}, {L"(", L"("}};
    for (int round = 0; round < 5000; ++round) {
        std::wstring text = texts.Next(25);
        if (!text.empty() && text.front() == L'\\')
            text.front() = L'x';
        ReadingRoom room(text);
        for (const auto& [written, spoken] : modify)
            room.store.SaveSetting(L"modify", written, spoken);
        const auto start = static_cast<std::int32_t>(texts.Below(text.size() + 1));
        const auto length = static_cast<std::int32_t>(texts.Below(text.size() + 3));
        SCOPED_TRACE(testing::Message() << Narrow(text) << " " << start << " " << length);
        const bool pauses = texts.Below(3) == 0;
        room.shared.interwordpause = pauses ? 30 : 0;
        room.reader.ReadSection(start, length);
        std::wstring spoken = L"<silent>";
        if (!room.character.utterances.empty()) {
            spoken = room.character.utterances.back();
            const std::size_t from = spoken.find(L"\\map=\"") + 6;
            spoken = spoken.substr(from, spoken.rfind(L"\\Mrk=999999999\\") - from);
        }
        std::wstring model = ModelBody(text, start, length, modify);
        for (std::size_t at = model.find(L' '); pauses && at != std::wstring::npos; at = model.find(L' '))
            model.replace(at, 1, L";\\pau=30\\");
        if (model.empty())
            model = L"<silent>";
        ASSERT_EQ(Narrow(spoken), Narrow(model));
        ASSERT_EQ(spoken, model);
    }
}

// What is read of a section: first and last position.
Span Read(const Section& section) { return {section.startpos + 1, section.lastRead}; }

using NextOf = std::optional<Section> (*)(std::wstring_view, std::int32_t);
using PreviousOf = std::optional<Section> (*)(std::wstring_view, std::int32_t);

void WalkForthAndBack(const std::wstring& text, const std::vector<Span>& expected, NextOf next,
                      PreviousOf previous)
{
    std::vector<Section> met;
    std::int32_t end = 0;
    for (auto section = next(text, end); section; section = next(text, end)) {
        ASSERT_LE(met.size(), text.size());
        ASSERT_GT(section->lastRead, end);
        met.push_back(*section);
        end = section->lastRead;
    }
    ASSERT_EQ(met.size(), expected.size());
    for (std::size_t i = 0; i < met.size(); ++i)
        ASSERT_EQ(Read(met[i]), expected[i]) << i;
    for (std::size_t i = met.size(); i-- > 1;) {
        const auto back = previous(text, met[i].startpos);
        ASSERT_TRUE(back);
        ASSERT_EQ(Read(*back), expected[i - 1]) << i;
    }
    if (!met.empty()) {
        const auto first = previous(text, met[0].startpos);
        ASSERT_TRUE(first);
        ASSERT_EQ(Read(*first), expected[0]);
    }
}

TEST(Walk, SentencesForthAndBackAreThoseOfTheModel)
{
    RandomTexts texts(99);
    for (int round = 0; round < 20000; ++round) {
        const std::wstring text = texts.Next(30);
        SCOPED_TRACE(Narrow(text));
        WalkForthAndBack(text, tests::ModelSentences(text), NextSentence, PreviousSentence);
        if (testing::Test::HasFailure())
            return;
    }
}

TEST(Walk, WordsForthAndBackAreThoseOfTheModel)
{
    RandomTexts texts(100);
    for (int round = 0; round < 20000; ++round) {
        const std::wstring text = texts.Next(30);
        SCOPED_TRACE(Narrow(text));
        WalkForthAndBack(text, tests::ModelWords(text), NextWord, PreviousWord);
        if (testing::Test::HasFailure())
            return;
    }
}

// Every line that has a letter or digit, by the position of its first character.
std::vector<std::int32_t> LinesWithWords(const std::wstring& text)
{
    std::vector<std::int32_t> lines;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t to = std::min(text.find(L"\r\n", from), text.size());
        if (to > from)
            lines.push_back(static_cast<std::int32_t>(from));
        from = to + 2;
    }
    return lines;
}

// The line that the current section reads, or -1 when it is an empty one.
std::int32_t LineOf(const ReadingRoom& room)
{
    const std::wstring& text = room.box.Text();
    std::int32_t from = room.reader.startpos;
    const auto size = static_cast<std::int32_t>(text.size());
    while (from < size && (text[from] == L'\r' || text[from] == L'\n'))
        ++from;
    if (from >= size || from >= room.reader.startpos + std::max(room.reader.strlength, 1))
        return -1;
    return from;
}

TEST(Walk, ParagraphsForthAndBackMeetEveryLineOnce)
{
    RandomTexts texts(101);
    for (int round = 0; round < 1500; ++round) {
        const std::wstring text = texts.NextInBox(30);
        SCOPED_TRACE(Narrow(text));
        const std::vector<std::int32_t> lines = LinesWithWords(text);
        // A first line of nothing but an end mark is met on the way back only.
        if (lines.empty() || text.find_first_of(L".!?") == 0)
            continue;
        ReadingRoom room(text);
        std::vector<std::int32_t> forth;
        const auto meet = [&](std::vector<std::int32_t>& met) {
            const std::int32_t line = LineOf(room);
            if (line >= 0 && (met.empty() || met.back() != line))
                met.push_back(line);
        };
        for (std::size_t i = 0; i < text.size() + 2; ++i) {
            room.reader.SelectNextParagraph();
            meet(forth);
        }
        ASSERT_EQ(forth, lines);
        std::vector<std::int32_t> back;
        meet(back);
        for (std::size_t i = 0; i < text.size() + 2; ++i) {
            room.reader.ResetToBlack();
            room.reader.SelectPreviousParagraph();
            meet(back);
        }
        std::reverse(back.begin(), back.end());
        ASSERT_EQ(back, lines);
    }
}

// Keys pressed in any order: one section on or back from wherever the walk stands.
TEST(Walk, AnyMixOfNextAndPreviousStepsByOne)
{
    RandomTexts texts(102);
    for (int round = 0; round < 3000; ++round) {
        const std::wstring text = texts.NextInBox(40);
        SCOPED_TRACE(Narrow(text));
        const bool words = round % 2 == 0;
        const std::vector<Span> expected = words ? tests::ModelWords(text) : tests::ModelSentences(text);
        if (expected.empty())
            continue;
        ReadingRoom room(text);
        std::size_t at = 0;
        bool started = false;
        for (int i = 0; i < 25; ++i) {
            const bool next = texts.Below(5) < 3;
            room.reader.ResetToBlack();
            if (next) {
                words ? room.reader.SelectNextWord() : room.reader.SelectNextSentence();
                at = started ? std::min(at + 1, expected.size() - 1) : 0;
            } else {
                words ? room.reader.SelectPreviousWord() : room.reader.SelectPreviousSentence();
                at = at > 0 ? at - 1 : 0;
            }
            started = true;
            ASSERT_EQ(room.reader.startpos + 1, expected[at].first) << i;
        }
    }
}

} // namespace
} // namespace voxtrel::textreader
