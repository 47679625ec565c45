#pragma once

#include "tools/acsc/character_source.h"
#include "tools/acsc/pixels.h"

#include <filesystem>
#include <memory>

namespace voxtrel::acsc {

// Draws stances from the drawings of a character.
class Renderer {
public:
    // Opens the drawings in folder and finds every part in them. Throws SourceError.
    Renderer(const CharacterSource& source, const std::filesystem::path& folder);
    ~Renderer();

    // The stance at the size of a frame, with a hard outline.
    Pixels Draw(const Stance& stance) const;

private:
    class Drawings;
    const CharacterSource& source_;
    std::unique_ptr<Drawings> drawings_;
};

} // namespace voxtrel::acsc
