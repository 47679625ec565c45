#include "textreader/text_reader.h"

#include "agent/control.h"

#include <algorithm>
#include <utility>

namespace voxtrel::textreader {

namespace {

class BusyPointer {
public:
    explicit BusyPointer(ReaderWindow& window) : window_(window) { window_.SetBusyPointer(true); }
    ~BusyPointer() { window_.SetBusyPointer(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    ReaderWindow& window_;
};

} // namespace

void TextReader::SelectCurrentWord()
{
    readingAll_ = false;
    box_.SetSelColor(kBlack);
    const std::int32_t caret = box_.SelStart();
    BeginSelect();
    ReadFound(CurrentWord(box_.Text(), caret));
}

void TextReader::SelectCurrentSentence()
{
    box_.SetSelColor(kBlack);
    const std::int32_t caret = box_.SelStart();
    const std::int32_t oldScanStart = scanStart_;
    BeginSelect();
    ReadFound(CurrentSentence(box_.Text(), caret, oldScanStart));
}

void TextReader::SelectCurrentParagraph()
{
    const std::int32_t caret = box_.SelStart();
    BeginSelect();
    ReadFound(CurrentParagraph(box_.Text(), caret));
}

void TextReader::SelectNextWord()
{
    BeginSelect();
    if (sectionIsText_)
        NarrowTo(CurrentWord(box_.Text(), WordHeard()));
    ReadFound(NextWord(box_.Text(), lastRead_));
}

void TextReader::SelectNextSentence()
{
    BeginSelect();
    if (sectionIsText_)
        NarrowTo(CurrentSentence(box_.Text(), WordHeard(), 0));
    ReadFound(NextSentence(box_.Text(), lastRead_));
}

void TextReader::SelectNextParagraph()
{
    BeginSelect();
    ReadFound(NextParagraph(box_.Text(), startpos, strlength));
}

void TextReader::SelectPreviousWord()
{
    BeginSelect();
    if (sectionIsText_)
        NarrowTo(CurrentWord(box_.Text(), WordHeard()));
    ReadFound(PreviousWord(box_.Text(), startpos));
}

void TextReader::SelectPreviousSentence()
{
    BeginSelect();
    if (sectionIsText_)
        NarrowTo(CurrentSentence(box_.Text(), WordHeard(), 0));
    ReadFound(PreviousSentence(box_.Text(), startpos));
}

void TextReader::SelectPreviousParagraph()
{
    const std::int32_t caret = box_.SelStart();
    BeginSelect();
    endPending_ = true;
    ReadFound(PreviousParagraph(box_.Text(), caret));
}

// Another section is to be read, so a pause is over and its highlight goes.
void TextReader::BeginSelect()
{
    keepHighlight_ = false;
    wholeText_ = false;
    userSelection_.reset();
    if (!box_.Text().empty())
        Unhighlight();
}

void TextReader::ReadFound(const std::optional<Section>& found)
{
    if (box_.Text().empty())
        return;
    if (found)
        Publish(*found);
    ++reading_;
    ReadSection(startpos, strlength);
}

std::int32_t TextReader::WordHeard() const { return wordReading_ == reading_ ? word_.position : 0; }

// From the whole text one goes on or back from where the voice is in it; from its beginning when nothing was
// heard.
void TextReader::NarrowTo(const std::optional<Section>& around)
{
    const Section section = WordHeard() > 0 && around ? *around : Section{};
    startpos = section.startpos;
    strlength = section.strlength;
    lastRead_ = section.lastRead;
    sectionIsText_ = false;
}

void TextReader::Publish(const Section& section)
{
    sectionIsText_ = false;
    scanStart_ = section.scanStart;
    scanEnd_ = section.scanEnd;
    startpos = section.startpos;
    strlength = section.strlength;
    lastRead_ = section.lastRead;
    Select(startpos, strlength);
}

void TextReader::ClearOneShots()
{
    readingAll_ = false;
    wholeText_ = false;
    keepHighlight_ = false;
    endPending_ = false;
}

void TextReader::ReadSection(std::int32_t start, std::int32_t length)
{
    if (length == 0)
        return;
    if (!keepHighlight_)
        Paint(start, length, sentenceColor);
    ReadingMarkup reading;
    {
        const BusyPointer busy(window_);
        reading = BuildReadingMarkup(box_.Text(), start, length, shared_, pronunciations_.Table());
    }
    if (reading.markup.empty())
        return;
    StopAll();
    marks_ = std::move(reading.words);
    nextMark_ = 0;
    edits_.clear();
    Speak(std::move(reading.markup));
}

void TextReader::SpeakSelection()
{
    NoteUserCaret();
    const Selection selected = userSelection_.value_or(Selection{box_.SelStart(), box_.SelLength()});
    BeginSelect();
    StopAll();
    ClearOneShots();
    window_.ReleasePause();
    readingAll_ = true;
    const auto textLength = static_cast<std::int32_t>(box_.Text().size());
    startpos = selected.start;
    strlength = selected.length > 0 ? selected.length : textLength - selected.start;
    sectionIsText_ = false;
    scanStart_ = startpos;
    scanEnd_ = lastRead_ = startpos + strlength;
    ++reading_;
    ReadSection(startpos, strlength);
}

void TextReader::speakWindowText()
{
    ClearOneShots();
    readingAll_ = true;
    wholeText_ = true;
    userSelection_.reset();
    window_.ReleasePause();
    window_.RefreshTextBox();
    if (!window_.BlockHighlight())
        window_.FocusHiddenBox();
    sectionIsText_ = true;
    startpos = 0;
    strlength = static_cast<std::int32_t>(box_.Text().size());
    lastRead_ = strlength;
    ++reading_;
    ReadSection(startpos, strlength);
    closeTheWindow = window_.AutoClose();
    Speak(std::wstring(kEndOfSectionTag));
    if (closeTheWindow)
        Speak(std::wstring(kEndOfTextTag));
}

void TextReader::PauseSpeech()
{
    StopAll();
    keepHighlight_ = true;
}

void TextReader::ResumeSpeech()
{
    readingAll_ = true;
    keepHighlight_ = true;
    endPending_ = false;
    std::int32_t resumePoint = startpos;
    // Only a word of this very section says where it was left off.
    if (lastBookmark_ != 0 && lastWordReading_ == reading_) {
        const bool numberTells = lastWord_.position == UnpackWordMark(lastBookmark_).position;
        resumePoint = numberTells ? ResumePoint(lastBookmark_) : lastWord_.position + lastWord_.length;
    }
    const std::int32_t remainder = strlength - (resumePoint - startpos);
    if (remainder < 1) {
        Paint(startpos, strlength, kBlack);
        Unhighlight();
        return;
    }
    ReadSection(resumePoint, remainder);
    if (wholeText_ && closeTheWindow)
        Speak(std::wstring(kEndOfTextTag));
}

void TextReader::PrepareNavigation()
{
    ClearOneShots();
    window_.ReleasePause();
    ResetToBlack();
}

void TextReader::ResetToBlack()
{
    StopAll();
    NoteUserCaret();
    box_.SetSelColor(kBlack);
    if (startpos < 0)
        return;
    ClearOneShots();
    Unhighlight();
    const Selection caret = userSelection_.value_or(Selection{startpos, 0});
    Select(caret.start, caret.length);
    userSelection_.reset();
}

void TextReader::Select(std::int32_t start, std::int32_t length)
{
    box_.SetSelStart(std::max(start, 0));
    box_.SetSelLength(length);
    // As the box has it: what lay outside the text has been moved to its edge.
    ownSelection_ = {box_.SelStart(), box_.SelLength()};
}

void TextReader::Paint(std::int32_t start, std::int32_t length, std::int32_t color)
{
    Select(start, length);
    box_.SetSelColor(color);
    if (color == kBlack)
        return;
    const TextRange painted{ownSelection_.start, ownSelection_.start + ownSelection_.length};
    highlighted_ = highlighted_.Empty() ? painted
                                        : TextRange{std::min(highlighted_.begin, painted.begin),
                                                    std::max(highlighted_.end, painted.end)};
}

void TextReader::Unhighlight()
{
    if (highlighted_.Empty())
        return;
    Paint(highlighted_.begin, highlighted_.end - highlighted_.begin, kBlack);
    highlighted_ = {};
}

// A caret that is not where the engine left it has been placed by the user.
void TextReader::NoteUserCaret()
{
    const Selection now{box_.SelStart(), box_.SelLength()};
    if (now.start != ownSelection_.start || now.length != ownSelection_.length)
        userSelection_ = now;
}

void TextReader::Speak(std::wstring markup)
{
    if (shared_.character == nullptr)
        return;
    speaking_ = true;
    agent::Ignore(shared_.character->Speak(std::move(markup)));
}

void TextReader::StopAll()
{
    speaking_ = false;
    if (shared_.character != nullptr)
        agent::Ignore(shared_.character->StopAll());
}

} // namespace voxtrel::textreader
