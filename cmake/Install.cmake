# Everything that an installation needs; a Debian package is made of the same rules.
include(GNUInstallDirs)
set(KELVO_ID org.example.kelvo)
set(KELVO_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/kelvo)

install(TARGETS kelvo kelvo-batch kelvo-simulator RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# First files and texts: the program copies them into the folder of each user, who may change them there.
file(GLOB KELVO_TEXTS CONFIGURE_DEPENDS packaging/*.TXT)
install(FILES packaging/KELVO.ini packaging/DEFAULT.CLI ${KELVO_TEXTS} DESTINATION ${CMAKE_INSTALL_DATADIR}/kelvo)

install(FILES packaging/${KELVO_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/${KELVO_ID}.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES packaging/${KELVO_ID}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES packaging/${KELVO_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

file(GLOB KELVO_MAN CONFIGURE_DEPENDS packaging/man/*.1)
install(FILES ${KELVO_MAN} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
file(GLOB KELVO_COMPLETIONS CONFIGURE_DEPENDS packaging/completions/*)
install(FILES ${KELVO_COMPLETIONS} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
# An example: whoever needs it copies it.
install(FILES packaging/99-kelvo-no-modem-probe.rules DESTINATION ${KELVO_DOC_DIR}/examples)

# The manual for a browser. Without cmark-gfm the program shows it all the same.
find_program(CMARK_GFM cmark-gfm)
if(CMARK_GFM)
  file(GLOB KELVO_MANUAL CONFIGURE_DEPENDS docs/*.md docs/*.png)
  set(KELVO_HTML ${CMAKE_BINARY_DIR}/html)
  add_custom_command(OUTPUT ${KELVO_HTML}/manual.html
    COMMAND ${CMAKE_SOURCE_DIR}/packaging/manual-html.sh ${CMARK_GFM} ${CMAKE_SOURCE_DIR}/docs ${KELVO_HTML}
    DEPENDS packaging/manual-html.sh ${KELVO_MANUAL}
    VERBATIM)
  add_custom_target(kelvo_html ALL DEPENDS ${KELVO_HTML}/manual.html)
  install(DIRECTORY ${KELVO_HTML} DESTINATION ${KELVO_DOC_DIR})
endif()

# What an installation takes, and no more.
add_custom_target(kelvo_installed DEPENDS kelvo kelvo-batch kelvo-simulator)
if(CMARK_GFM)
  add_dependencies(kelvo_installed kelvo_html)
endif()
