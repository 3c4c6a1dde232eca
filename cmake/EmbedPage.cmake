# Makes the C++ source of the page of a run: its template with style and scripts inside, split where
# the data of a run goes. The policy of the page permits this style and this script only, by their
# checksums.
#
#     cmake -D OUTPUT=page_parts.cpp -P EmbedPage.cmake -- page.html page.css SCRIPT...

# Sets `result` to the source expression of a checksum: SHA-256 in base 64, made of 3 hexadecimal
# digits at a time, as CMake has only those.
function(source_hash text result)
  set(alphabet ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
  string(SHA256 digits "${text}")
  string(APPEND digits 00)
  set(hash "")
  foreach(at RANGE 0 65 3)
    string(SUBSTRING "${digits}" ${at} 3 three)
    math(EXPR first "0x${three} >> 6")
    math(EXPR second "0x${three} & 63")
    string(SUBSTRING ${alphabet} ${first} 1 first)
    string(SUBSTRING ${alphabet} ${second} 1 second)
    string(APPEND hash "${first}${second}")
  endforeach()
  string(SUBSTRING "${hash}" 0 43 hash)
  set(${result} "'sha256-${hash}='" PARENT_SCOPE)
endfunction()

set(html "")
set(css "")
set(js "")
set(at 0)
while(NOT "${CMAKE_ARGV${at}}" STREQUAL "--")
  math(EXPR at "${at} + 1")
endwhile()
math(EXPR first "${at} + 1")
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(at RANGE ${first} ${last})
  file(READ "${CMAKE_ARGV${at}}" text)
  string(REPLACE "\r\n" "\n" text "${text}")
  string(REGEX MATCH "[a-z]+$" kind "${CMAKE_ARGV${at}}")
  string(APPEND ${kind} "${text}")
endforeach()
source_hash("${css}" style_hash)
source_hash("${js}" script_hash)
string(REPLACE "{{style hash}}" "${style_hash}" html "${html}")
string(REPLACE "{{script hash}}" "${script_hash}" html "${html}")
string(REPLACE "{{style}}" "${css}" html "${html}")
string(REPLACE "{{script}}" "${js}" html "${html}")

string(FIND "${html}" "{{data}}" split)
string(SUBSTRING "${html}" 0 ${split} before)
math(EXPR split "${split} + 8")
string(SUBSTRING "${html}" ${split} -1 after)
file(WRITE "${OUTPUT}" "#include \"host/page/page_parts.h\"

namespace libvarrow::host {

const std::string_view kPageBeforeData = R\"PAGE(${before})PAGE\";
const std::string_view kPageAfterData = R\"PAGE(${after})PAGE\";

}  // namespace libvarrow::host
")
