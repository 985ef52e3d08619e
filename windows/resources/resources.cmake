# Gives a program its icon, its version and its manifest. description: one line, for the file's properties.
enable_language(RC)
set(CORVEL_ICON "" CACHE FILEPATH "The program's icon, as the tool corvel_icon writes it")

function(corvel_add_resources target description)
  configure_file(${PROJECT_SOURCE_DIR}/windows/resources/program.rc.in ${target}.rc @ONLY)
  set_property(SOURCE ${target}.rc PROPERTY OBJECT_DEPENDS
    "${CORVEL_ICON};${PROJECT_SOURCE_DIR}/windows/resources/program.manifest")
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()
