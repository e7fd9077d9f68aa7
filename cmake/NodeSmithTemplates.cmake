# Template databases: built from the text sources of resources/templates and put where the program looks
# for them, beside the executables and among its resources.

set(NODESMITH_TEMPLATE_SOURCES ${PROJECT_SOURCE_DIR}/resources/templates)
set(NODESMITH_PROFILE_SOURCES ${PROJECT_SOURCE_DIR}/resources/codb)
set(NODESMITH_TEMPLATE_FOLDER ${CMAKE_BINARY_DIR}/bin/data)

# The program opens these two beside its executable, the third only from its resources.
set(NODESMITH_FILE_TEMPLATES mt objects)

# nodesmith_template(<name> SOURCES <files of resources/templates in reading order>)
#   Adds the rule for <name>.data. The same sources give the same bytes.
function(nodesmith_template name)
  cmake_parse_arguments(ARG "" "" "SOURCES" ${ARGN})
  list(TRANSFORM ARG_SOURCES PREPEND ${NODESMITH_TEMPLATE_SOURCES}/)
  if(name IN_LIST NODESMITH_FILE_TEMPLATES)
    set(folder ${NODESMITH_TEMPLATE_FOLDER})
  else()
    set(folder ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  file(MAKE_DIRECTORY ${folder})
  set(database ${folder}/${name}.data)
  add_custom_command(OUTPUT ${database}
    COMMAND nodesmith-templates --output ${database} ${ARG_SOURCES}
    DEPENDS nodesmith-templates ${ARG_SOURCES}
    COMMENT "Building template ${name}.data"
    VERBATIM)
  set_property(GLOBAL APPEND PROPERTY NODESMITH_TEMPLATES ${database})
endfunction()

# nodesmith_template_resources()
#   The object library nodesmith_template_resources with every template under ":/databases/data" and every
#   profile under ":/codb"; the registration of resources would be dropped from a static library. Whatever
#   opens a template links it directly.
function(nodesmith_template_resources)
  get_property(templates GLOBAL PROPERTY NODESMITH_TEMPLATES)
  file(GLOB profiles CONFIGURE_DEPENDS ${NODESMITH_PROFILE_SOURCES}/*.codb)
  set(entries "")
  foreach(prefix IN ITEMS /databases/data /codb)
    if(prefix STREQUAL /codb)
      set(files ${profiles})
    else()
      set(files ${templates})
    endif()
    string(APPEND entries "  <qresource prefix=\"${prefix}\">\n")
    foreach(file IN LISTS files)
      get_filename_component(alias ${file} NAME)
      string(APPEND entries "    <file alias=\"${alias}\">${file}</file>\n")
    endforeach()
    string(APPEND entries "  </qresource>\n")
  endforeach()
  set(list ${CMAKE_CURRENT_BINARY_DIR}/templates.qrc)
  file(CONFIGURE OUTPUT ${list} CONTENT "<RCC>\n${entries}</RCC>\n" @ONLY)

  # Format 1 carries no time stamps, so that equal content gives equal programs.
  set(code ${CMAKE_CURRENT_BINARY_DIR}/qrc_templates.cpp)
  add_custom_command(OUTPUT ${code}
    COMMAND Qt6::rcc --format-version 1 --name templates --output ${code} ${list}
    DEPENDS Qt6::rcc ${list} ${templates} ${profiles}
    COMMENT "Embedding templates and profiles"
    VERBATIM)
  add_library(nodesmith_template_resources OBJECT ${code})
  set_target_properties(nodesmith_template_resources PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(nodesmith_template_resources PRIVATE nodesmith_options Qt6::Core)
endfunction()
