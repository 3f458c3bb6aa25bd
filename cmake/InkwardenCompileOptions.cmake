# Compile options shared by every Inkwarden target.
add_library(inkwarden_options INTERFACE)

target_compile_options(inkwarden_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
if(INKWARDEN_WERROR)
    target_compile_options(inkwarden_options INTERFACE -Werror)
endif()

target_compile_definitions(inkwarden_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_KEYWORDS
    QT_NO_URL_CAST_FROM_STRING
    QT_USE_QSTRINGBUILDER
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)

if(INKWARDEN_SANITIZE)
    set(_inkwarden_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_compile_options(inkwarden_options INTERFACE ${_inkwarden_sanitizers})
    target_link_options(inkwarden_options INTERFACE ${_inkwarden_sanitizers})
endif()

# Links every object of the static LIBRARIES into the executable TARGET and exports their symbols,
# for a module that the executable loads at run time and that uses them.
function(inkwarden_export_libraries target)
    set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
    set(archives "")
    foreach(library IN LISTS ARGN)
        string(APPEND archives " $<TARGET_FILE:${library}>")
        add_dependencies(${target} ${library})
    endforeach()
    # One option, so that CMake does not fold the repeated flags into one.
    target_link_options(${target} PRIVATE "SHELL:-Wl,--whole-archive${archives} -Wl,--no-whole-archive")
endfunction()
