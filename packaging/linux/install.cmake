# The program finds its folders beside itself, so the command in the path is a link to it.
foreach(_command IN ITEMS voxtrel acsc)
  if(TARGET ${_command})
    install(CODE "
      set(_bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin\")
      file(MAKE_DIRECTORY \"\${_bin}\")
      file(CREATE_LINK ../lib/voxtrel/${_command} \"\${_bin}/${_command}\" SYMBOLIC)")
  endif()
endforeach()
install(FILES ${CMAKE_CURRENT_LIST_DIR}/voxtrel.desktop DESTINATION share/applications)
install(FILES ${CMAKE_SOURCE_DIR}/resources/icons/voxtrel.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION share/doc/voxtrel RENAME copyright)
