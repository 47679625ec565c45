#pragma once

#include <string>
#include <utility>

namespace voxtrel::agent {

// Error numbers of the character server, as clients of the documented control know them.
enum class ErrorCode : unsigned int {
    None = 0,
    CharacterIdNotValid = 0x80042002,
    NoSuchAnimation = 0x80042003,
    NoAnimationForState = 0x80042004,
    CharacterHidden = 0x8004200A,
    CharacterAlreadyLoaded = 0x8004200B,
    NoBalloon = 0x8004200C,
    AnimationDamaged = 0x8004200F,
    VoiceNotAvailable = 0x80042013,
    RequestRemoved = 0x80042108,
    InterruptedByApplication = 0x8004210C,
    InterruptedByHiding = 0x8004210D,
    FileVersionUnsupported = 0x80042202,
    FileTooNew = 0x80042203,
    NotACharacterFile = 0x80042204,
    AudioNotAccessible = 0x80042401,
    FileNotFound = 0x80070002,
    DataInvalid = 0x8007000D,
    // Of a control that the system brings along.
    SystemControlMissing = 0x80040154,
    NoAnswer = 0x8001011F,
};

// What a call came to. A failure carries a sentence that the user may be shown.
struct [[nodiscard]] Result {
    ErrorCode code = ErrorCode::None;
    std::wstring description;

    bool Ok() const { return code == ErrorCode::None; }

    static Result Success() { return {}; }
    static Result Failure(ErrorCode failure, std::wstring words) { return {failure, std::move(words)}; }
};

// Drops a result on purpose: the step may fail, the next one still runs.
inline void Ignore(const Result&) {}

} // namespace voxtrel::agent
