#pragma once

#include <string>
#include <string_view>

namespace voxtrel::textreader {

struct LoadedText {
    std::wstring text;
    std::wstring error; // empty when the text was loaded; else a sentence for the user
};

// What the bytes of a text file say: UTF-8 and UTF-16 with or without a byte order mark, else the Western
// code page. Line ends become CR LF. Bytes that are no text give an error.
LoadedText DecodeText(std::string_view bytes);

// Reads a file whole and decodes it. Errors name the file.
LoadedText LoadTextFile(const std::wstring& path);

// The Western code page (Windows-1252); the five bytes it leaves open are kept as control characters.
std::wstring FromWestern(std::string_view bytes);

} // namespace voxtrel::textreader
