#pragma once

#include "settings/shared_settings.h"
#include "speech/pronunciation_list.h"
#include "textreader/bookmark.h"
#include "textreader/reader_window.h"
#include "textreader/reading_markup.h"
#include "textreader/rich_text_box.h"
#include "textreader/segmentation.h"
#include "textreader/text_edit.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The Text Reader without its window: moves about in the text, reads a section aloud and lets the highlight
// follow.
namespace voxtrel::textreader {

class TextReader {
public:
    // What is handed in outlives the reader. Without a character in the shared record nothing is spoken.
    TextReader(RichTextBox& box, ReaderWindow& window, const settings::SharedSettings& shared,
               const speech::PronunciationList& pronunciations)
        : box_(box), window_(window), shared_(shared), pronunciations_(pronunciations)
    {
    }

    // Each reads the section around the caret, after or before the current one. At either end of the text the
    // section there is read again.
    void SelectCurrentWord();
    void SelectCurrentSentence();
    void SelectCurrentParagraph();
    void SelectNextWord();
    void SelectNextSentence();
    void SelectNextParagraph();
    void SelectPreviousWord();
    void SelectPreviousSentence();
    void SelectPreviousParagraph();

    // start is a box position. Colours the section, unless a pause keeps the highlight, and speaks it.
    void ReadSection(std::int32_t start, std::int32_t length);

    // The selected characters; without a selection the text from the caret on.
    void SpeakSelection();

    void speakWindowText();
    void agent1_Bookmark(std::int32_t number);
    void PauseSpeech();
    void ResumeSpeech();

    // Silences, takes the highlight away and puts the caret back to the start of the section; where the user
    // has placed the caret since, it stays.
    void ResetToBlack();

    // What every navigation begins with: a pause and the flags of the reading before are over, and
    // ResetToBlack.
    void PrepareNavigation();

    // Whether a section is being spoken: from the call on until its end was heard or it was stopped.
    bool Reading() const { return speaking_; }

    // Follows a change of the text, which the box already has: section, highlight and the words still to be
    // heard keep their places.
    void TextEdited(const TextEdit& edit);

    std::int32_t startpos = 0;   // box position of the current section
    std::int32_t strlength = 0;  // its characters
    std::int32_t BookmarkID = 0; // the last word bookmark received; 0 before the first
    bool closeTheWindow = false; // when the reading of the whole text ends

    // Red in the low byte, blue in the third.
    std::int32_t wordColor = 0x0000FF;
    std::int32_t sentenceColor = 0xFF0000;

private:
    void BeginSelect();
    void ReadFound(const std::optional<Section>& found);
    void Publish(const Section& section);
    void NarrowTo(const std::optional<Section>& around);
    std::int32_t WordHeard() const;
    void ClearOneShots();

    void Select(std::int32_t start, std::int32_t length);
    void Paint(std::int32_t start, std::int32_t length, std::int32_t color);
    void Unhighlight();
    void NoteUserCaret();

    void WordReached(std::int32_t number);
    void SectionEnded();
    std::optional<WordMark> TakeMark(std::int32_t number);

    void Speak(std::wstring markup);
    void StopAll();

    RichTextBox& box_;
    ReaderWindow& window_;
    const settings::SharedSettings& shared_;
    const speech::PronunciationList& pronunciations_;

    std::int32_t scanStart_ = 0;
    std::int32_t scanEnd_ = 0;
    bool sectionIsText_ = false;
    std::int32_t lastRead_ = 0; // 1-based position of the last character of the section
    TextRange highlighted_;     // all that has a colour

    std::int32_t lastBookmark_ = 0; // one behind BookmarkID: where reading goes on after a pause
    WordMark word_;                 // the place that BookmarkID stands for, in the text as it is now
    WordMark lastWord_;             // the same for lastBookmark_
    int reading_ = 0;               // counts the sections read; a resumed one keeps its number
    int wordReading_ = 0;           // in which of them word_ and lastWord_ were heard
    int lastWordReading_ = 0;

    bool readingAll_ = false;
    bool wholeText_ = false; // as readingAll_, but not for a resumed section
    bool keepHighlight_ = false;
    bool endPending_ = false;
    bool speaking_ = false;

    std::vector<WordMark> marks_; // of the utterance being spoken, in order
    std::size_t nextMark_ = 0;
    std::vector<TextEdit> edits_; // since that utterance began

    struct Selection {
        std::int32_t start = 0;
        std::int32_t length = 0;
    };
    Selection ownSelection_; // as the engine left it
    std::optional<Selection> userSelection_;
};

} // namespace voxtrel::textreader
