# cmake -DOUTPUT=FILE.cpp -DPAGES=FOLDER -DTEMPLATES=FOLDER -P embed.cmake
# Writes the texts of a folder each into a C++ file, as the tables that embedded.h declares. A table
# without an entry would be no C++; neither folder is ever empty.

# Sets `table` to the lines of a table with all files of a folder.
function(make_table folder suffix)
    file(GLOB paths ${folder}/*${suffix})
    list(SORT paths)
    set(lines "")
    foreach(path IN LISTS paths)
        get_filename_component(name ${path} NAME_WE)
        file(READ ${path} text)
        if(text MATCHES "\\)orvane_text\"")
            message(FATAL_ERROR "${path} holds the end mark of a raw string")
        endif()
        string(APPEND lines "    {\"${name}\", R\"orvane_text(${text})orvane_text\"},\n")
    endforeach()
    set(table "${lines}" PARENT_SCOPE)
endfunction()

make_table(${PAGES} .md)
set(pages "${table}")
make_table(${TEMPLATES} .vorla)
set(templates "${table}")
file(WRITE ${OUTPUT} "#include \"orvane/embedded.h\"

namespace Orvane {

namespace {

constexpr EmbeddedText pages[] = {
${pages}};

constexpr EmbeddedText templates[] = {
${templates}};

} // namespace

std::span<const EmbeddedText> messagePages() { return pages; }

std::span<const EmbeddedText> programTemplates() { return templates; }

} // namespace Orvane
")
