# What every target of the project has in common.
add_library(quorbit_options INTERFACE)
target_compile_options(quorbit_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
target_compile_definitions(quorbit_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS
    QT_NO_FOREACH QT_STRICT_ITERATORS)
if(QUORBIT_WERROR)
    target_compile_options(quorbit_options INTERFACE -Werror)
endif()
# What is shipped is hardened as Debian's own programs are.
set(shipped $<CONFIG:Release>)
target_compile_options(quorbit_options INTERFACE
    $<${shipped}:-U_FORTIFY_SOURCE> $<${shipped}:-D_FORTIFY_SOURCE=2> $<${shipped}:-fstack-protector-strong>
    $<${shipped}:-Wformat> $<${shipped}:-Wformat-security>)
target_link_options(quorbit_options INTERFACE
    $<${shipped}:-Wl,-z,relro> $<${shipped}:-Wl,-z,now> $<${shipped}:-Wl,--as-needed>)
if(QUORBIT_SANITIZE)
    # Without vptr, which reads memory by way of a pipe and calls every object broken where no descriptor is left.
    target_compile_options(quorbit_options INTERFACE -fsanitize=address,undefined -fno-sanitize=vptr
                           -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
    target_link_options(quorbit_options INTERFACE -fsanitize=address,undefined)
    # For whatever the tests start, too: what the sanitizers can see but look for only when asked. The stricter checks of
    # strings are left out: the X keyboard library copies from strings that do not end, which is allowed.
    set(asan detect_leaks=1 detect_stack_use_after_return=1 check_initialization_order=1 strict_init_order=1)
    list(JOIN asan ":" asan)
    set(QUORBIT_SANITIZER_ENVIRONMENT "ASAN_OPTIONS=${asan}" "UBSAN_OPTIONS=print_stacktrace=1")
endif()

# quorbit_library(NAME sources... [LINK targets...]): one room of the house, included from src/ as "room/File.h".
function(quorbit_library name)
    cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
    add_library(${name} STATIC ${arg_UNPARSED_ARGUMENTS})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE quorbit_options)
endfunction()

# quorbit_precompile_widgets(NAME): for a room of views, whose sources would read the same headers of the toolkit again.
function(quorbit_precompile_widgets name)
    target_precompile_headers(${name} PRIVATE
        <QAccessible> <QBoxLayout> <QEvent> <QKeyEvent> <QPainter> <QPointer> <QString> <QVariant> <QWidget>
        <chrono> <functional> <map> <optional> <string> <vector>)
endfunction()

# quorbit_test(NAME sources... [LINK targets...]): a Qt Test program with one line in CTest, on the offscreen platform.
function(quorbit_test name)
    cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_LINK} Qt6::Test quorbit_options)
    add_test(NAME ${name} COMMAND ${name})
    set(environment QT_QPA_PLATFORM=offscreen LANG=C.UTF-8 LC_ALL=C.UTF-8 no_proxy=* ${QUORBIT_SANITIZER_ENVIRONMENT})
    set_tests_properties(${name} PROPERTIES TIMEOUT 120 LABELS unit ENVIRONMENT "${environment}")
endfunction()
