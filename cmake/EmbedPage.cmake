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

# Sets `result` to string literals with the text, which end at line ends. Visual C++ refuses longer ones
# than 16,380 bytes: these have at most 4,000 characters, of up to 4 bytes.
function(string_literals text result)
  set(literals "")
  while(NOT "${text}" STREQUAL "")
    string(SUBSTRING "${text}" 0 4000 piece)
    if(NOT "${piece}" STREQUAL "${text}")
      string(FIND "${piece}" "\n" end REVERSE)
      if(end EQUAL -1)
        message(FATAL_ERROR "The page has a line of more than 4000 characters")
      endif()
      math(EXPR end "${end} + 1")
      string(SUBSTRING "${piece}" 0 ${end} piece)
    endif()
    string(LENGTH "${piece}" length)
    string(SUBSTRING "${text}" ${length} -1 text)
    string(APPEND literals "\n    R\"PAGE(${piece})PAGE\",")
  endwhile()
  set(${result} "${literals}" PARENT_SCOPE)
endfunction()

string(FIND "${html}" "{{data}}" split)
string(SUBSTRING "${html}" 0 ${split} before)
math(EXPR split "${split} + 8")
string(SUBSTRING "${html}" ${split} -1 after)
string_literals("${before}" before)
string_literals("${after}" after)
file(WRITE "${OUTPUT}" "#include \"host/page/page_parts.h\"

namespace libvarrow::host {

const PagePart kPageBeforeData{${before}};
const PagePart kPageAfterData{${after}};

}  // namespace libvarrow::host
")
