# What "cmake --install" puts where, and the Debian package of it. Needs the packages of scripts/packages/packaging
# for the icons, the guide and the man pages, which are made with the option CORVEL_PACKAGE.
include(GNUInstallDirs)

# Of the last change, so that the same sources give the same files; today where there is no history.
execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} log -1 --format=%ct
  OUTPUT_VARIABLE CORVEL_TIME OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(CORVEL_TIME)
  set(ENV{SOURCE_DATE_EPOCH} ${CORVEL_TIME})
endif()
string(TIMESTAMP CORVEL_DATE "%Y-%m-%d" UTC)
string(TIMESTAMP CORVEL_DEBIAN_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)

set(share ${PROJECT_BINARY_DIR}/share)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/corvel)

configure_file(packaging/corvel.metainfo.xml.in ${share}/corvel.metainfo.xml @ONLY)
configure_file(packaging/corvel.1.in ${share}/corvel.1 @ONLY)
configure_file(packaging/corvel-demo-server.1.in ${share}/corvel-demo-server.1 @ONLY)
configure_file(packaging/changelog.in ${share}/changelog @ONLY)

set(icons)
foreach(side 16 22 24 32 48 64 128 256)
  set(place ${share}/icons/hicolor/${side}x${side}/apps/corvel.png)
  add_custom_command(OUTPUT ${place} COMMAND corvel_icon ${place})
  list(APPEND icons ${place})
endforeach()
set(place ${share}/icons/hicolor/scalable/apps/corvel.svg)
add_custom_command(OUTPUT ${place} COMMAND corvel_icon ${place})
list(APPEND icons ${place})

add_custom_command(OUTPUT ${share}/guide.html
  COMMAND ${PROJECT_SOURCE_DIR}/packaging/guide ${share}/guide.html
  DEPENDS docs/guide.md packaging/guide packaging/guide-head.html)
set(packed)
foreach(text corvel.1 corvel-demo-server.1 changelog)
  add_custom_command(OUTPUT ${share}/${text}.gz
    COMMAND gzip --best --no-name --keep --force ${share}/${text} DEPENDS ${share}/${text})
  list(APPEND packed ${share}/${text}.gz)
endforeach()
add_custom_target(corvel_package_files ALL DEPENDS ${icons} ${share}/guide.html ${packed})

install(TARGETS corvel corvel-demo-server)
install(FILES packaging/corvel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${share}/corvel.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(DIRECTORY ${share}/icons DESTINATION ${CMAKE_INSTALL_DATADIR})
install(FILES ${share}/corvel.1.gz ${share}/corvel-demo-server.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${share}/guide.html ${share}/changelog.gz packaging/copyright DESTINATION ${documents})
install(DIRECTORY docs/pictures DESTINATION ${documents})
install(FILES share/settings.ini DESTINATION ${documents}/examples)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/dist)
set(CPACK_PACKAGE_CONTACT "Corvel maintainers <maintainers@users.noreply.c-seed-88276fe8.example>")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_NAME corvel)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "administration of FTP servers over their control connections
Corvel keeps several FTP servers in view at once and works through nothing
but their control connections: it shows the dialogue and takes commands,
walks and changes the remote file tree, and manages the users and groups of
servers that have the commands for it, thousands at once.")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
include(CPack)
