// What the voice reports, and what the user's edits do to it.
//
// A bookmark number tells its word's place only below 100000, and only in the text that was read. The marks
// of the utterance are therefore kept in order: the next one with the number that arrived is the word, and
// the edits since then have moved it.

#include "textreader/text_reader.h"

#include <algorithm>

namespace voxtrel::textreader {

namespace {

TextRange RangeOf(WordMark word) { return {word.position - 1, word.position - 1 + word.length}; }

WordMark Moved(WordMark word, const TextEdit& edit)
{
    if (word.position == 0)
        return word;
    const TextRange moved = Moved(RangeOf(word), edit);
    return {moved.begin + 1, moved.Length()};
}

// The number itself is what counts wherever it can say the place.
WordMark Decoded(std::int32_t number, WordMark mark)
{
    const WordMark said = UnpackWordMark(number);
    const bool exact = said.position == mark.position && said.length - mark.length <= 1;
    return exact && said.length >= mark.length ? said : mark;
}

} // namespace

void TextReader::agent1_Bookmark(std::int32_t number)
{
    NoteUserCaret();
    if (BookmarkID != 0) {
        lastBookmark_ = BookmarkID;
        lastWord_ = word_;
        lastWordReading_ = wordReading_;
    }
    if (window_.BlockHighlight())
        window_.ActivateTextBox();
    if (number == kEndOfText) {
        StopAll();
        window_.CloseTextReader();
    } else if (number == kEndOfSection) {
        SectionEnded();
    } else {
        WordReached(number);
    }
}

void TextReader::WordReached(std::int32_t number)
{
    const std::optional<WordMark> word = TakeMark(number);
    if (!word)
        return;
    // A word that was heard in another section has lost its colour with it.
    if (readingAll_ && BookmarkID != 0 && wordReading_ == reading_)
        Paint(word_.position - 1, word_.length, sentenceColor);
    BookmarkID = number;
    word_ = *word;
    wordReading_ = reading_;
    // A block keeps its colour, and the spoken word stands out in black.
    Paint(word_.position - 1, word_.length, window_.BlockHighlight() ? kBlack : wordColor);
}

void TextReader::SectionEnded()
{
    Paint(startpos, strlength, kBlack);
    Unhighlight();
    readingAll_ = false;
    speaking_ = false;
    if (endPending_) {
        endPending_ = false;
        return;
    }
    if (keepHighlight_) {
        if (startpos == 1)
            startpos = 0;
        Paint(startpos, strlength, kBlack);
    } else {
        const std::int32_t readUpTo = wordReading_ == reading_ ? word_.position - 1 + word_.length : startpos;
        Paint(startpos, std::max(readUpTo - startpos, 0), kBlack);
    }
}

// The mark behind a bookmark number; nothing for a number that is none of this utterance.
std::optional<WordMark> TextReader::TakeMark(std::int32_t number)
{
    for (std::size_t i = nextMark_; i < marks_.size(); ++i) {
        if (PackWordMark(marks_[i]) != number)
            continue;
        nextMark_ = i + 1;
        WordMark word = Decoded(number, marks_[i]);
        for (const TextEdit& edit : edits_)
            word = Moved(word, edit);
        return word;
    }
    return std::nullopt;
}

void TextReader::TextEdited(const TextEdit& edit)
{
    const TextRange section = Moved(TextRange{startpos, startpos + strlength}, edit);
    const std::int32_t lastReadBeyond = lastRead_ - (startpos + strlength);
    lastRead_ = section.Empty() ? section.begin : std::max(section.end + lastReadBeyond, 0);
    startpos = section.begin;
    strlength = section.Length();
    const TextRange scanned = Moved(TextRange{scanStart_, scanEnd_}, edit);
    scanStart_ = scanned.begin;
    scanEnd_ = scanned.end;
    word_ = Moved(word_, edit);
    lastWord_ = Moved(lastWord_, edit);
    const auto move = [&](Selection& selection) {
        const TextRange moved = Moved(TextRange{selection.start, selection.start + selection.length}, edit);
        selection = {moved.begin, moved.Length()};
    };
    move(ownSelection_);
    if (userSelection_)
        move(*userSelection_);
    // What is typed in the highlight or at its edge takes its colour.
    if (!highlighted_.Empty()) {
        const bool touched =
            edit.position <= highlighted_.end && edit.position + edit.removed >= highlighted_.begin;
        highlighted_ = Moved(highlighted_, edit);
        if (touched)
            highlighted_ = {std::min(highlighted_.begin, edit.position),
                            std::max(highlighted_.end, edit.position + edit.added)};
    }
    if (nextMark_ < marks_.size())
        edits_.push_back(edit);
}

} // namespace voxtrel::textreader
