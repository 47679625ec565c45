#include "agent/stage/embedded_control.h"

#include "agent/acs/reader.h"

#include <random>
#include <utility>

namespace voxtrel::agent::stage {

std::unique_ptr<Control> MakeEmbeddedControl(std::unique_ptr<speech::SpeechEngine> engine,
                                             std::unique_ptr<StageView> view, const StageOptions& options)
{
    auto generator =
        std::make_shared<std::minstd_rand>(options.seed != 0 ? options.seed : std::random_device{}());
    ControlParts parts;
    parts.engine = std::move(engine);
    parts.view = std::move(view);
    parts.loadCharacter = acs::LoadCharacterFile;
    parts.balloonText = speech::BalloonText;
    parts.random = [generator](int bound) {
        return std::uniform_int_distribution<int>(0, bound - 1)(*generator);
    };
    parts.trace = options.trace;
    return std::make_unique<EmbeddedControl>(std::move(parts));
}

} // namespace voxtrel::agent::stage
