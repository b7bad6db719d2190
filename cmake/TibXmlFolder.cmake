# One folder of the house becomes one object library that sees only the headers of the folders it
# names. Headers that other folders may include live in the folder's include/ directory; the rest
# lie beside their sources and stay private.
#
#   tibxml_folder(query SOURCES Lexer.cpp Parser.cpp USES tree platform)
#
# INCLUDES names other directories of headers instead of include/.
function(tibxml_folder name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;PACKAGES;INCLUDES")
  if(NOT arg_INCLUDES)
    set(arg_INCLUDES include)
  endif()
  add_library(tibxml_${name} OBJECT ${arg_SOURCES})
  list(TRANSFORM arg_INCLUDES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  target_include_directories(tibxml_${name} PUBLIC ${arg_INCLUDES})
  foreach(used IN LISTS arg_USES)
    target_link_libraries(tibxml_${name} PUBLIC tibxml_${used})
  endforeach()
  target_link_libraries(tibxml_${name} PRIVATE tibxml_build_options ${arg_PACKAGES})
  set_property(GLOBAL APPEND PROPERTY TIBXML_OBJECT_FOLDERS tibxml_${name})
  # Objects carry no link lines: what links them all links their packages too.
  set_property(GLOBAL APPEND PROPERTY TIBXML_FOLDER_PACKAGES ${arg_PACKAGES})
endfunction()

# A folder of headers alone, such as the exported headers.
#
#   tibxml_header_folder(headers USES platform tibutils api)
function(tibxml_header_folder name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DIRECTORY" "USES")
  if(NOT arg_DIRECTORY)
    set(arg_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/include)
  endif()
  add_library(tibxml_${name} INTERFACE)
  target_include_directories(tibxml_${name} INTERFACE ${arg_DIRECTORY})
  foreach(used IN LISTS arg_USES)
    target_link_libraries(tibxml_${name} INTERFACE tibxml_${used})
  endforeach()
endfunction()
