#pragma once

namespace voxtrel::platform {

// How far the program can see and reach on this desktop.
enum class DesktopReach {
    Everything,
    X11ProgramsOnly, // other programs hide their keys and windows: hot keys work while an X11 program is in
                     // front
    Nothing,         // no hot keys, no selection, no clipboard of other programs
};

} // namespace voxtrel::platform
