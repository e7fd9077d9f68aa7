# How every target of this project is built: one place for warnings, sanitizers and precompiled headers.

include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(NODESMITH_CCACHE ccache)
if(NODESMITH_CCACHE)
  # The sloppiness and -fno-pch-timestamp below let ccache serve units that use a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${NODESMITH_CCACHE})
endif()

add_library(nodesmith_options INTERFACE)
# Records are made by naming the fields that differ from their defaults, which g++ would call missing ones.
target_compile_options(nodesmith_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wnon-virtual-dtor;-Woverloaded-virtual;-Wno-missing-field-initializers;-Werror>)
target_compile_definitions(nodesmith_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER
  NODESMITH_VERSION="${PROJECT_VERSION}")
target_include_directories(nodesmith_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(nodesmith_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:SHELL:-Xclang -fno-pch-timestamp>)
endif()
if(NODESMITH_SANITIZE)
  target_compile_options(nodesmith_options INTERFACE
    -fsanitize=${NODESMITH_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(nodesmith_options INTERFACE -fsanitize=${NODESMITH_SANITIZE})
endif()
if(NODESMITH_FUZZ)
  target_compile_options(nodesmith_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Two precompiled headers: one for everything that batch runs need, one for all that draws.
function(nodesmith_pch_target name)
  set(source ${CMAKE_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Carries the shared precompiled header.\n")
  add_library(${name} STATIC ${source})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(${name} PRIVATE nodesmith_options ${ARGN})
endfunction()

if(NODESMITH_PCH)
  nodesmith_pch_target(nodesmith_pch_core Qt6::Core Qt6::Sql Qt6::Xml)
  target_precompile_headers(nodesmith_pch_core PRIVATE <QtCore> <QtSql> <QtXml>)
  nodesmith_pch_target(nodesmith_pch_widgets Qt6::Core Qt6::Sql Qt6::Xml Qt6::Widgets)
  target_precompile_headers(nodesmith_pch_widgets PRIVATE <QtWidgets> <QtSql> <QtXml>)
endif()

function(nodesmith_use_pch target level)
  if(NODESMITH_PCH)
    target_precompile_headers(${target} REUSE_FROM nodesmith_pch_${level})
  endif()
endfunction()

# nodesmith_library(<name> core|widgets SOURCES ... [LINKS ...])
#   One floor of src/. A target links only what stands below it; "core" floors never see Qt Widgets.
function(nodesmith_library name level)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(nodesmith_${name} STATIC ${ARG_SOURCES})
  list(TRANSFORM ARG_LINKS REPLACE "^([a-z].*)$" "nodesmith_\\1")
  target_link_libraries(nodesmith_${name} PUBLIC nodesmith_options ${ARG_LINKS} Qt6::Core Qt6::Sql Qt6::Xml)
  if(level STREQUAL "widgets")
    target_link_libraries(nodesmith_${name} PUBLIC Qt6::Widgets)
  endif()
  nodesmith_use_pch(nodesmith_${name} ${level})
endfunction()

# nodesmith_test(<name> core|widgets SOURCES ... [LINKS ...] [LABELS ...])
#   One QTest program run by CTest without a display and with a home folder of its own.
function(nodesmith_test name level)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  list(TRANSFORM ARG_LINKS REPLACE "^([a-z].*)$" "nodesmith_\\1")
  target_link_libraries(${name} PRIVATE nodesmith_options ${ARG_LINKS} Qt6::Core Qt6::Sql Qt6::Xml Qt6::Test)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE
    NODESMITH_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data"
    NODESMITH_TEST_GOLDEN="${PROJECT_SOURCE_DIR}/tests/golden"
    NODESMITH_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
  if(level STREQUAL "widgets")
    target_link_libraries(${name} PRIVATE Qt6::Widgets)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set(home ${CMAKE_BINARY_DIR}/tests/home/${name})
  file(MAKE_DIRECTORY ${home})
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${ARG_TIMEOUT}
    LABELS "${ARG_LABELS}"
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;HOME=${home};XDG_DATA_HOME=${home}/data;XDG_CONFIG_HOME=${home}/config;XDG_RUNTIME_DIR=${home};LC_ALL=C.UTF-8;TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
