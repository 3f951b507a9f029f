# Writes the tables of DoctorTables.h: cmake -DSOURCE=<project> -DOUTPUT=<file> -P DoctorTables.cmake
#
# A resource needs the functions that its source and the files included by it look up by name, NAMED(function), but not
# those that are looked up by a verb that can do without.
cmake_minimum_required(VERSION 3.25)
set(optionalVerbs "find|isOffered|isNewer")

# What a file of src/ names, and what it includes; read once.
function(read_source file)
    get_property(isRead GLOBAL PROPERTY read_${file} SET)
    if(isRead)
        return()
    endif()
    set_property(GLOBAL PROPERTY read_${file} ON)
    if(NOT EXISTS ${SOURCE}/src/${file})
        return()
    endif()
    file(READ ${SOURCE}/src/${file} text)
    string(REGEX MATCHALL "([A-Za-z]*\\()?NAMED\\([A-Za-z0-9_]+\\)" uses "${text}")
    foreach(use IN LISTS uses)
        string(REGEX REPLACE ".*NAMED\\((.*)\\)" "\\1" function "${use}")
        if(function STREQUAL "function")  # of the macro itself
            continue()
        endif()
        set_property(GLOBAL APPEND PROPERTY all_functions ${function})
        if(NOT use MATCHES "^(${optionalVerbs})\\(")
            set_property(GLOBAL APPEND PROPERTY functions_${file} ${function})
        endif()
    endforeach()
    string(REGEX MATCHALL "#include \"[^\"]+\"" includes "${text}")
    foreach(include IN LISTS includes)
        string(REGEX REPLACE ".*\"(.*)\"" "\\1" header "${include}")
        string(REGEX REPLACE "h$" "cpp" implementation "${header}")
        set_property(GLOBAL APPEND PROPERTY includes_${file} ${header} ${implementation})
    endforeach()
endfunction()

function(functions_of file output)
    set(pending ${file})
    set(seen "")
    set(functions "")
    while(pending)
        list(POP_FRONT pending next)
        if(next IN_LIST seen)
            continue()
        endif()
        list(APPEND seen ${next})
        read_source(${next})
        get_property(found GLOBAL PROPERTY functions_${next})
        get_property(included GLOBAL PROPERTY includes_${next})
        list(APPEND functions ${found})
        list(APPEND pending ${included})
    endwhile()
    list(SORT functions)
    list(REMOVE_DUPLICATES functions)
    set(${output} "${functions}" PARENT_SCOPE)
endfunction()

# Whether the catalogue has a row for GET with the query {"supports":true}.
file(READ ${SOURCE}/catalogue/catalogue.json catalogue)
string(JSON resources GET "${catalogue}" resources)
function(tells_support name output)
    set(${output} false PARENT_SCOPE)
    string(JSON rows ERROR_VARIABLE error GET "${resources}" ${name} methods GET)
    if(error)
        return()
    endif()
    string(JSON count LENGTH "${rows}")
    foreach(index RANGE 1 ${count})
        math(EXPR index "${index} - 1")
        string(JSON query ERROR_VARIABLE error GET "${rows}" ${index} query)
        if(NOT error AND query MATCHES "^{[ \n]*\"supports\" : {}[ \n]*}$")
            set(${output} true PARENT_SCOPE)
        endif()
    endforeach()
endfunction()

file(GLOB_RECURSE sources RELATIVE ${SOURCE}/src ${SOURCE}/src/*.cpp ${SOURCE}/src/*.h)
foreach(source IN LISTS sources)
    read_source(${source})
    get_filename_component(name ${source} NAME_WE)
    if(source MATCHES "^resources/.*\\.cpp$")
        set(source_of_${name} ${source})
    endif()
endforeach()

set(needs "")
file(STRINGS ${SOURCE}/src/exports/ResourceTable.inc rows REGEX "^(RESOURCE|ALIAS)")
foreach(row IN LISTS rows)
    string(REGEX MATCH "^(RESOURCE|ALIAS) *\\( *[0-9]+, *([A-Za-z0-9]+), *([A-Za-z0-9]*)" match "${row}")
    set(name ${CMAKE_MATCH_2})
    set(class ${name})
    set(supports false)
    if(CMAKE_MATCH_1 STREQUAL "ALIAS")
        set(class ${CMAKE_MATCH_3})
    else()
        tells_support(${name} supports)
    endif()
    functions_of(${source_of_${class}} functions)
    list(JOIN functions " " functions)
    string(APPEND needs "    {\"${name}\", ${supports}, \" ${functions} \"},\n")
endforeach()

get_property(functions GLOBAL PROPERTY all_functions)
list(SORT functions)
list(REMOVE_DUPLICATES functions)
list(TRANSFORM functions REPLACE "(.+)" "    \"\\1\",\n")
list(JOIN functions "" functions)

set(tokens "")
file(STRINGS ${SOURCE}/src/runtime/PathTokens.cpp rows REGEX "^    {\":")
foreach(row IN LISTS rows)
    string(REGEX REPLACE "Folder::" "torvo::platform::Folder::" row "${row}")
    string(REGEX REPLACE "NAMED\\((.*)\\)" "\"\\1\"" row "${row}")
    string(APPEND tokens "${row}\n")
endforeach()

file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "// Made by DoctorTables.cmake.
#include \"host/DoctorTables.h\"

namespace host {

static constexpr ResourceNeeds needs[] = {
${needs}};
const std::span<const ResourceNeeds> resourceNeeds = needs;

static constexpr std::string_view functions[] = {
${functions}};
const std::span<const std::string_view> functionsByName = functions;

static constexpr PathToken tokens[] = {
${tokens}};
const std::span<const PathToken> pathTokens = tokens;

}  // namespace host
" @ONLY)
