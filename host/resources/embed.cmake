# Writes a C++ source that holds the given files. Run as a script:
#   cmake -DFOLDER=<folder> -DFILES=<paths within it, separated by |> -DFUNCTION=<name> -DOUTPUT=<source>
#     -P embed.cmake
string(REPLACE "|" ";" files "${FILES}")
set(arrays "")
set(rows "")
set(index 0)
foreach(file IN LISTS files)
  file(READ "${FOLDER}/${file}" bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char file${index}[] = {${bytes}'\\0'};\n")
  string(APPEND rows "    {\"${file}\", {file${index}, sizeof file${index} - 1}},\n")
  math(EXPR index "${index} + 1")
endforeach()
file(WRITE "${OUTPUT}.new" "#include \"texts/embedded_files.h\"

namespace zovhost {

namespace {

${arrays}
constexpr EmbeddedFile files[] = {
${rows}};

}  // namespace

EmbeddedFiles ${FUNCTION}() { return {files, files + sizeof files / sizeof *files}; }

}  // namespace zovhost
")
file(RENAME "${OUTPUT}.new" "${OUTPUT}")
