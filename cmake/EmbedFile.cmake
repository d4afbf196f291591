# Puts a file into a program as `const zel::program::EmbeddedFile VARIABLE`. Included, it defines
# zel_embed_file(TARGET VARIABLE FILE); run by `cmake -P`, it writes the source. A FILE that was not
# found becomes an empty text.

if(NOT CMAKE_SCRIPT_MODE_FILE)
  set(zel_embed_script ${CMAKE_CURRENT_LIST_FILE})
  function(zel_embed_file target variable file)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/embedded/${variable}.cpp)
    if(file)
      get_filename_component(file ${file} ABSOLUTE)
      set(dependency ${file})
    endif()
    add_custom_command(OUTPUT ${source}
      COMMAND ${CMAKE_COMMAND} -DVARIABLE=${variable} -DINPUT=${file} -DOUTPUT=${source}
        -P ${zel_embed_script}
      DEPENDS ${dependency} ${zel_embed_script} VERBATIM)
    target_sources(${target} PRIVATE ${source})
  endfunction()
  return()
endif()

set(bytes "")
set(size 0)
string(SHA256 digest "")
if(INPUT)
  file(READ ${INPUT} hex HEX)
  string(LENGTH "${hex}" digits)
  math(EXPR size "${digits} / 2")
  file(SHA256 ${INPUT} digest)
  string(REPEAT "[0-9a-f]" 64 row)
  string(REGEX REPLACE "(${row})" "\\1\n" hex "${hex}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" bytes "${hex}")
  string(REPLACE "\n" "\"\n  \"" bytes "${bytes}")
endif()
file(WRITE ${OUTPUT} "#include \"tools/zel/report_page/embedded_files.h\"\n\n"
  "const zel::program::EmbeddedFile zel::program::${VARIABLE} = {\n"
  "  {\"${bytes}\",\n  ${size}}, \"${digest}\"};\n")
