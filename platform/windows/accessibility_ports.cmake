# The accessibility server's process as the program sees it, platform/server_process.h, and what the server asks of the
# desktop, platform/accessible_source.h.
voxtrel_system_library(voxtrel_server_process ${CMAKE_CURRENT_LIST_DIR}/pipe_server_process.cpp)

voxtrel_system_library(voxtrel_accessible_source
  ${CMAKE_CURRENT_LIST_DIR}/accessibility_server.cpp
  ${CMAKE_CURRENT_LIST_DIR}/control_items.cpp
  ${CMAKE_CURRENT_LIST_DIR}/control_questions.cpp
  ${CMAKE_CURRENT_LIST_DIR}/foreign_memory.cpp
  ${CMAKE_CURRENT_LIST_DIR}/msaa_query.cpp
  ${CMAKE_CURRENT_LIST_DIR}/standard_control.cpp
  ${CMAKE_CURRENT_LIST_DIR}/uia_query.cpp
  ${CMAKE_CURRENT_LIST_DIR}/windows_accessible_source.cpp
  ${CMAKE_SOURCE_DIR}/platform/readable_text.cpp
)
target_link_libraries(voxtrel_accessible_source PUBLIC voxtrel_settings PRIVATE oleacc ole32 oleaut32 uuid user32 gdi32)
