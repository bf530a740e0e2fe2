# How every room of the tree is built: warnings, sanitizers, the bundle, the tests.

set(KORVAN_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
set(KORVAN_BUNDLE ${CMAKE_BINARY_DIR}/Korvan.app/Contents/MacOS)
string(REGEX REPLACE "^/" "" KORVAN_INSTALLED_BUNDLE ${KORVAN_PACKAGED_BUNDLE}/Contents/MacOS)

add_library(korvan_options INTERFACE)
target_include_directories(korvan_options INTERFACE ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR})
target_compile_options(korvan_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_compile_definitions(korvan_options INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)
# Some of the programs run as root and read what others wrote.
set(release $<CONFIG:Release>)
target_compile_options(
  korvan_options INTERFACE $<${release}:-fstack-protector-strong> "$<${release}:SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>")
target_link_options(korvan_options INTERFACE $<${release}:LINKER:-z,relro,-z,now>)
if(KORVAN_SANITIZE)
  target_compile_options(korvan_options INTERFACE -fsanitize=${KORVAN_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(korvan_options INTERFACE -fsanitize=${KORVAN_SANITIZE})
endif()

# All that is in the bundle.
add_custom_target(korvan_bundle)

# korvan_library(NAME SOURCES file... LINKS target...): the static library of one room.
function(korvan_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC korvan_options ${ARG_LINKS})
endfunction()

# korvan_program(NAME FOLDER folder SOURCES file... LINKS target...): a program of the bundle, built into FOLDER below
# the application folder ("" for the folder itself).
function(korvan_program name)
  cmake_parse_arguments(ARG "" "FOLDER;OUTPUT" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE korvan_options ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${KORVAN_BUNDLE}/${ARG_FOLDER})
  if(ARG_OUTPUT)
    set_target_properties(${name} PROPERTIES OUTPUT_NAME ${ARG_OUTPUT})
  endif()
  add_dependencies(korvan_bundle ${name})
  install(TARGETS ${name} DESTINATION ${KORVAN_INSTALLED_BUNDLE}/${ARG_FOLDER})
endfunction()

# korvan_bundle_files(NAME FOLDER folder FILES file...): copies files, their modes included, into the bundle at every
# build in which they changed.
function(korvan_bundle_files name)
  cmake_parse_arguments(ARG "" "FOLDER" "FILES" ${ARGN})
  set(copies)
  foreach(file IN LISTS ARG_FILES)
    get_filename_component(source ${file} ABSOLUTE)
    get_filename_component(leaf ${file} NAME)
    set(copy ${KORVAN_BUNDLE}/${ARG_FOLDER}/${leaf})
    add_custom_command(
      OUTPUT ${copy}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${KORVAN_BUNDLE}/${ARG_FOLDER}
      COMMAND ${CMAKE_COMMAND} -E copy ${source} ${copy}
      DEPENDS ${source}
      VERBATIM)
    list(APPEND copies ${copy})
    set(kind FILES)
    if(leaf MATCHES "[.]sh$")
      set(kind PROGRAMS)
    endif()
    install(${kind} ${source} DESTINATION ${KORVAN_INSTALLED_BUNDLE}/${ARG_FOLDER})
  endforeach()
  add_custom_target(${name} ALL DEPENDS ${copies})
  add_dependencies(korvan_bundle ${name})
endfunction()

# korvan_test(NAME LABEL label SOURCES file... LINKS target...): one test program, in a folder of its own, which is
# thereby its application folder. LABEL is unit, window or lab. With IN_LAB the program runs on the subscriber's machine of
# a lab of its own (lab/README.md), with ON_SCREEN on an X server of its own. TIMEOUT in seconds (120 unless given).
function(korvan_test name)
  cmake_parse_arguments(ARG "IN_LAB;ON_SCREEN" "LABEL;TIMEOUT" "SOURCES;LINKS;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE korvan_options korvan_test_support Qt5::Test ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/${name})
  target_compile_definitions(
    ${name} PRIVATE KORVAN_BUNDLE="${KORVAN_BUNDLE}" KORVAN_SOURCE="${CMAKE_SOURCE_DIR}"
                    KORVAN_BUILD="${CMAKE_BINARY_DIR}")
  if(KORVAN_SANITIZE STREQUAL thread)
    target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/QtThreads.cpp)
    target_link_libraries(${name} PRIVATE ${CMAKE_DL_LIBS})
  endif()
  if(ARG_DEPENDS)
    add_dependencies(${name} ${ARG_DEPENDS})
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set(around)
  if(ARG_ON_SCREEN)
    set(around ${CMAKE_SOURCE_DIR}/scripts/with-screen.sh)
  elseif(ARG_IN_LAB)
    set(around ${CMAKE_SOURCE_DIR}/lab/lab run --build ${CMAKE_BINARY_DIR} --)
    add_dependencies(${name} lab_service)
  endif()
  set_property(GLOBAL PROPERTY KORVAN_COMMAND_${name} ${around} $<TARGET_FILE:${name}>)
  add_test(NAME ${name} COMMAND ${around} $<TARGET_FILE:${name}> WORKING_DIRECTORY ${CMAKE_BINARY_DIR}/tests/${name})
  korvan_test_properties(${name} ${ARG_LABEL} ${ARG_TIMEOUT})
endfunction()

# korvan_person_test(NAME CASES case...): the cases of that test, all unless named, with the program started by an ordinary
# user, as NAME_person. Both use the same application folder. It needs root, which starts it so.
function(korvan_person_test name)
  cmake_parse_arguments(ARG "" "" "CASES" ${ARGN})
  get_test_property(${name} LABELS label)
  get_test_property(${name} TIMEOUT timeout)
  get_property(command GLOBAL PROPERTY KORVAN_COMMAND_${name})
  add_test(NAME ${name}_person COMMAND ${command} ${ARG_CASES} WORKING_DIRECTORY ${CMAKE_BINARY_DIR}/tests/${name})
  korvan_test_properties(${name}_person ${label} ${timeout})
  set_property(TEST ${name}_person APPEND PROPERTY ENVIRONMENT KORVAN_TEST_START=person)
  set_tests_properties(${name} ${name}_person PROPERTIES RESOURCE_LOCK ${name})
endfunction()

# korvan_network_test(NAME LABEL label FILE cases.sh DEPENDS target...): the cases of a script, for which
# tests/support/network-cases.sh makes a network each. The target NAME builds what they run.
function(korvan_network_test name)
  cmake_parse_arguments(ARG "" "LABEL;FILE" "DEPENDS" ${ARGN})
  add_custom_target(${name} ALL)
  add_dependencies(${name} ${ARG_DEPENDS})
  add_test(NAME ${name} COMMAND ${CMAKE_SOURCE_DIR}/tests/support/network-cases.sh ${KORVAN_BUNDLE}
                                ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_FILE})
  korvan_test_properties(${name} ${ARG_LABEL} 300)
endfunction()

# What ctest knows of every test.
function(korvan_test_properties name label timeout)
  set_tests_properties(
    ${name} PROPERTIES LABELS ${label} TIMEOUT ${timeout}
                       SKIP_REGULAR_EXPRESSION "SKIPPED WHOLE TEST;lab: it needs root;lab: /dev/net/tun is missing")
  set_property(
    TEST ${name}
    PROPERTY ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
             "LC_ALL=C.UTF-8"
             "LANGUAGE=" # the window speaks English
             "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/tsan.supp:ignore_noninstrumented_modules=1"
             "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp")
endfunction()
