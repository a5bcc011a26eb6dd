include(GNUInstallDirs)
install(TARGETS kelvo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_SOURCE_DIR}/packaging/KELVO.ini ${CMAKE_SOURCE_DIR}/packaging/DEFAULT.CLI
              ${CMAKE_SOURCE_DIR}/packaging/ISEINTRO.TXT ${CMAKE_SOURCE_DIR}/packaging/PHINTRO.TXT
              ${CMAKE_SOURCE_DIR}/packaging/Hware.TXT
        DESTINATION ${CMAKE_INSTALL_DATADIR}/kelvo)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/kelvo.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/kelvo.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/kelvo.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
