# The accessibility server's process as the program sees it, platform/server_process.h, and what the server asks of the
# desktop, platform/accessible_source.h.
voxtrel_system_library(voxtrel_server_process ${CMAKE_CURRENT_LIST_DIR}/socket_server_process.cpp)
target_link_libraries(voxtrel_server_process PUBLIC voxtrel_settings)

# Of libatspi only the names of roles and states: its calls know no deadline of ours.
pkg_check_modules(ATSPI REQUIRED IMPORTED_TARGET GLOBAL atspi-2)
pkg_check_modules(ACCESSIBLE_SOURCE REQUIRED IMPORTED_TARGET GLOBAL gio-2.0 xcb xcb-shape)
voxtrel_system_library(voxtrel_accessible_source
  ${CMAKE_CURRENT_LIST_DIR}/atspi_accessible.cpp
  ${CMAKE_CURRENT_LIST_DIR}/atspi_bus.cpp
  ${CMAKE_CURRENT_LIST_DIR}/atspi_description.cpp
  ${CMAKE_CURRENT_LIST_DIR}/atspi_source.cpp
  ${CMAKE_CURRENT_LIST_DIR}/x11_pointer.cpp
  ${CMAKE_SOURCE_DIR}/platform/readable_text.cpp
)
target_include_directories(voxtrel_accessible_source SYSTEM PRIVATE ${ATSPI_INCLUDE_DIRS})
target_link_libraries(voxtrel_accessible_source PUBLIC voxtrel_settings PRIVATE PkgConfig::ACCESSIBLE_SOURCE)
