#include "tools/acsc/character_words.h"

#include <charconv>
#include <cstdint>
#include <string>

namespace voxtrel::acsc {

agent::acs::Color ColorOf(WordReader& words)
{
    const std::string text = words.Any("a colour");
    unsigned value = 0;
    const char* const end = text.data() + text.size();
    if (text.size() != 7 || text[0] != '#' || std::from_chars(text.data() + 1, end, value, 16).ptr != end)
        words.Fail("'" + text + "' is no colour like #FFFBF0");
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>((value >> 8) & 0xFF),
            static_cast<std::uint8_t>(value & 0xFF)};
}

bool AcceptBalloonWord(WordReader& words, agent::acs::BalloonInfo& balloon)
{
    if (words.Accept("text"))
        balloon.text = ColorOf(words);
    else if (words.Accept("background"))
        balloon.background = ColorOf(words);
    else if (words.Accept("border"))
        balloon.border = ColorOf(words);
    else if (words.Accept("sizetotext"))
        balloon.sizeToText = words.OnOff();
    else if (words.Accept("autohide"))
        balloon.autoHide = words.OnOff();
    else if (words.Accept("autopace"))
        balloon.autoPace = words.OnOff();
    else
        return false;
    return true;
}

} // namespace voxtrel::acsc
