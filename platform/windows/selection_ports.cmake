# Hot keys, other programs' windows and the clipboard: platform/selection_ports.h.
voxtrel_system_library(voxtrel_selection_ports
  ${CMAKE_CURRENT_LIST_DIR}/selection_ports.cpp
  ${CMAKE_CURRENT_LIST_DIR}/windows_clipboard.cpp
  ${CMAKE_CURRENT_LIST_DIR}/windows_keys.cpp
  ${CMAKE_CURRENT_LIST_DIR}/windows_target_windows.cpp
)
target_link_libraries(voxtrel_selection_ports PUBLIC voxtrel_settings PRIVATE user32)
