# One INTERFACE target carries the compiler options; one function makes a library of a folder, one a test program.

add_library(zelvo_options INTERFACE)
target_include_directories(zelvo_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(zelvo_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(zelvo_options INTERFACE QT_NO_CAST_TO_ASCII)
target_link_libraries(zelvo_options INTERFACE Qt6::Core Qt6::Gui Qt6::Widgets)
if(ZELVO_SANITIZE)
    # GCC sees uninitialised values in the code that the sanitizers add.
    target_compile_options(zelvo_options INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined
                                           $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(zelvo_options INTERFACE -fsanitize=address,undefined)
endif()

# zelvo_library(NAME libs...): every source of the current folder, as one static library.
function(zelvo_library name)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    if(sources)
        file(GLOB headers CONFIGURE_DEPENDS *.h)
        add_library(${name} STATIC ${sources} ${headers})
        target_link_libraries(${name} PUBLIC $<BUILD_INTERFACE:zelvo_options> ${ARGN})
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE zelvo_options ${ARGN})
    endif()
endfunction()

# zelvo_test(NAME libs...): every source of the current folder, as one test program run by CTest; in two halves where it waits long.
function(zelvo_test name)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_executable(${name} ${sources})
    # Fixtures in anonymous namespaces do not outlive being joined into one source.
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
    target_link_libraries(${name} PRIVATE test_support ${ARGN})
    if(name IN_LIST ZELVO_HALVED_TESTS)
        set(parts 1 2)
    else()
        set(parts 1)
    endif()
    list(LENGTH parts count)
    foreach(part IN LISTS parts)
        set(test ${name})
        if(count GREATER 1)
            set(test ${name}_${part}_of_${count})
        endif()
        math(EXPR shard "${part} - 1")
        add_test(NAME ${test} COMMAND ${name})
        set_tests_properties(${test} PROPERTIES ENVIRONMENT
            "GTEST_TOTAL_SHARDS=${count};GTEST_SHARD_INDEX=${shard};QT_QPA_PLATFORM=offscreen;QT_SCALE_FACTOR=1;LANG=C.UTF-8;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0"
            TIMEOUT 600)
        # ./test runs them side by side: what waits most begins first, and what asks how long something took has all cores.
        if(name IN_LIST ZELVO_LONG_TESTS)
            set_tests_properties(${test} PROPERTIES COST 100)
        elseif(name IN_LIST ZELVO_TIMED_TESTS)
            set_tests_properties(${test} PROPERTIES RUN_SERIAL ON)
        endif()
    endforeach()
endfunction()
