# cmake -DINPUT=<file> -DNAME=<name> -DOUTPUT=<source> -P EmbedCatalogue.cmake
#
# Writes a source file that defines metareview::catalogues::<name>, a view of the bytes of a file.
file(READ ${INPUT} bytes HEX)
string(LENGTH "${bytes}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
file(
  WRITE ${OUTPUT}
  "#include \"metareview2024/words/catalogues.h\"\n\nnamespace metareview::catalogues {\n\n"
  "constexpr std::size_t kSize = ${size};\nconst std::string_view ${NAME}(\n    \"${bytes}\",\n    kSize);\n\n"
  "}  // namespace metareview::catalogues\n")
