// Character files of any content: the reader refuses them or gives a character whose indexes all lead
// somewhere.

#include "agent/acs/reader.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

using namespace voxtrel::agent::acs;

void Require(bool promise)
{
    if (!promise)
        std::abort();
}

void Use(const CharacterFile& character)
{
    const std::size_t images = character.images->Count();
    // Some thousand entries may lead to the same image; a few of them show as much as all.
    for (std::size_t i = 0; i < images && i < 50; ++i) {
        const Image image = character.images->Decode(i);
        Require(image.pixels.size() ==
                static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    }
    for (const Animation& animation : character.animations) {
        const auto frames = static_cast<int>(animation.frames.size());
        for (const Frame& frame : animation.frames) {
            for (const FrameImage& image : frame.images)
                Require(image.image < images);
            for (const MouthOverlay& mouth : frame.mouths)
                Require(mouth.image < images && mouth.mouth <= Mouth::Narrow);
            for (const Branch& branch : frame.branches)
                Require(branch.target >= 0 && branch.target < frames);
            Require(!frame.exitFrame || (*frame.exitFrame >= 0 && *frame.exitFrame < frames));
            Require(!frame.sound || static_cast<std::size_t>(*frame.sound) < character.sounds->Count());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ReadOutcome read = ReadCharacterFile({data, data + size});
    if (read.result.Ok())
        Use(read.character);
    else
        Require(!read.result.description.empty());
    return 0;
}
