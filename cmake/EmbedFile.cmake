# cmake -DINPUT=<file> -DNAMESPACE=<namespace> -DNAME=<name> -DHEADER=<header> -DOUTPUT=<source> -P EmbedFile.cmake
#
# Writes a source file that defines <namespace>::<name>, a view of the bytes of a file, which the header declares.
file(READ ${INPUT} bytes HEX)
string(LENGTH "${bytes}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
file(
  WRITE ${OUTPUT}
  "#include \"${HEADER}\"\n\nnamespace ${NAMESPACE} {\n\n"
  "const std::string_view ${NAME}(\n    \"${bytes}\",\n    ${size});\n\n"
  "}  // namespace ${NAMESPACE}\n")
