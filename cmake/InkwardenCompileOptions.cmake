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
