# What every target of the project's own code shares: warnings as errors, sanitizers, hidden symbols.

function(lumro_target name)
  target_compile_options(${name} PRIVATE
    -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    -fpch-preprocess)
  set_target_properties(${name} PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  if(LUMRO_SANITIZE)
    target_compile_options(${name} PRIVATE
      -fsanitize=${LUMRO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${name} PRIVATE -fsanitize=${LUMRO_SANITIZE})
  endif()
endfunction()

# The same for targets that use Qt: moc and uic run, and the toolkit's keywords stay free for device headers.
function(lumro_qt_target name)
  lumro_target(${name})
  target_compile_definitions(${name} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_DEPRECATED_WARNINGS)
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
endfunction()

# The code of tests: quick to compile rather than to run; all of it as for programs, or they could not share
# precompiled headers.
function(lumro_test_target name)
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1> -fPIE)
endfunction()

# A test program. Qt tests share the support main (offscreen, throw-away settings, fixed locale). All share the
# precompiled headers of their support library.
#   lumro_test(NAME name [QT] SOURCES ... LIBS ...)
function(lumro_test)
  cmake_parse_arguments(T "QT" "NAME" "SOURCES;LIBS" ${ARGN})
  add_executable(${T_NAME} ${T_SOURCES})
  if(T_QT)
    lumro_qt_target(${T_NAME})
    set(support test_support_qt)
  else()
    lumro_target(${T_NAME})
    set(support test_support)
  endif()
  lumro_test_target(${T_NAME})
  target_link_libraries(${T_NAME} PRIVATE ${support} ${T_LIBS})
  target_precompile_headers(${T_NAME} REUSE_FROM ${support})
  set_target_properties(${T_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  add_test(NAME ${T_NAME} COMMAND ${T_NAME})
  set_tests_properties(${T_NAME} PROPERTIES TIMEOUT 1200)
endfunction()
