# Writes a C++ header that holds a file's bytes: cmake -DINPUT=... -DOUTPUT=... -DNAME=...
# -P embed_file.cmake. The header defines NAME (a char array, not NUL-terminated) and
# NAME##Size. Bytes, not a string literal: compilers limit the length of string literals.
file(READ "${INPUT}" hex HEX)
string(LENGTH "${hex}" hex_length)
math(EXPR size "${hex_length} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
get_filename_component(source "${INPUT}" NAME)
file(WRITE "${OUTPUT}.tmp"
  "// Generated from ${source} at build time; do not edit.\n"
  "#pragma once\n\n#include <cstddef>\n\n"
  "inline constexpr char ${NAME}[] = {\n    ${bytes}};\n"
  "inline constexpr std::size_t ${NAME}Size = ${size};\n")
# Only a changed header is replaced, so an unchanged template does not rebuild its users.
file(COPY_FILE "${OUTPUT}.tmp" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.tmp")
