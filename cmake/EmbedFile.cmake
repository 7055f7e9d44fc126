# cmake -DINPUT=<file> -DNAMESPACE=<namespace> -DNAME=<name> -DHEADER=<header> -DOUTPUT=<source> -P EmbedFile.cmake
#
# Writes a source file that defines <namespace>::<name>, a view of the bytes of a file, which the header declares. The bytes
# are an array, since compilers need not take a literal of more than 65,536 bytes.
file(READ ${INPUT} bytes HEX)
string(LENGTH "${bytes}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
file(
  WRITE ${OUTPUT}
  "#include \"${HEADER}\"\n\n#include <array>\n\nnamespace ${NAMESPACE} {\nnamespace {\n\n"
  "constexpr std::array<char, ${size}> kBytes = {${bytes}};\n\n"
  "}  // namespace\n\nconst std::string_view ${NAME}(kBytes.data(), kBytes.size());\n\n"
  "}  // namespace ${NAMESPACE}\n")
