#include "options/view/options_room.h"

namespace voxtrel::options {

void OptionsRoom::ShowOptions(agent::Control& agent1)
{
    if (window_ == nullptr) {
        const RoomServices& s = services_;
        characters_ = std::make_unique<speech::CharacterControl>(
            agent1,
            speech::CharacterSurroundings{s.store, s.shared, s.desktop, s.access, s.messages, s.folder},
            s.strings);
        window_ = new frmOptions({.options = {s.store, s.shared, s.strings, s.folder, s.desktop, s.messages,
                                              s.hotKeys, *characters_},
                                  .access = s.access,
                                  .iconFolder = s.iconFolder,
                                  .helpFile = s.helpFile(),
                                  .unloaded = [this] { window_ = nullptr; }});
    }
    window_->ShowOptions();
}

void OptionsRoom::UnloadOptions()
{
    if (window_ != nullptr)
        window_->Unload();
}

} // namespace voxtrel::options
