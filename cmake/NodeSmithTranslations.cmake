# Translations: compiled from resources/translations/nodesmith_<language>.ts and put among the program's
# resources under ":/translations". `./dev translations` refreshes the sources.

find_program(NODESMITH_LRELEASE lrelease HINTS /usr/lib/qt6/bin REQUIRED)

# nodesmith_translation_resources()
#   The object library nodesmith_translation_resources. The editions link it directly, because the
#   registration of resources would be dropped from a static library.
function(nodesmith_translation_resources)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/translations/*.ts)
  set(compiled "")
  set(entries "")
  foreach(source IN LISTS sources)
    get_filename_component(name ${source} NAME_WE)
    set(output ${CMAKE_CURRENT_BINARY_DIR}/${name}.qm)
    add_custom_command(OUTPUT ${output}
      COMMAND ${NODESMITH_LRELEASE} -silent -removeidentical ${source} -qm ${output}
      DEPENDS ${source}
      COMMENT "Compiling ${name}.ts"
      VERBATIM)
    list(APPEND compiled ${output})
    string(APPEND entries "    <file alias=\"${name}.qm\">${output}</file>\n")
  endforeach()
  set(list ${CMAKE_CURRENT_BINARY_DIR}/translations.qrc)
  file(CONFIGURE OUTPUT ${list}
    CONTENT "<RCC>\n  <qresource prefix=\"/translations\">\n${entries}  </qresource>\n</RCC>\n" @ONLY)
  set(code ${CMAKE_CURRENT_BINARY_DIR}/qrc_translations.cpp)
  add_custom_command(OUTPUT ${code}
    COMMAND Qt6::rcc --format-version 1 --name translations --output ${code} ${list}
    DEPENDS Qt6::rcc ${list} ${compiled}
    COMMENT "Embedding translations"
    VERBATIM)
  add_library(nodesmith_translation_resources OBJECT ${code})
  set_target_properties(nodesmith_translation_resources PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(nodesmith_translation_resources PRIVATE nodesmith_options Qt6::Core)
endfunction()
