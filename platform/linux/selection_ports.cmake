# Hot keys, other programs' windows and the clipboard: platform/selection_ports.h.
pkg_check_modules(SELECTION REQUIRED IMPORTED_TARGET gtk+-3.0 xcb xcb-xfixes xcb-xinput xcb-xtest)

voxtrel_system_library(voxtrel_selection_ports
  ${CMAKE_CURRENT_LIST_DIR}/selection_ports.cpp
  ${CMAKE_CURRENT_LIST_DIR}/toolkit_clipboard.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_clipboard.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_clipboard_keeper.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_connection.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_key_map.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_keys.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_keystrokes.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_selection_server.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_target_windows.cpp
)
target_link_libraries(voxtrel_selection_ports PUBLIC voxtrel_settings PRIVATE PkgConfig::SELECTION)
