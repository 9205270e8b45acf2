# One static library per core folder, named koru_<folder>, with its sources listed and the
# folder's dependencies spelled out, so the layering stays visible in the build.
function(koru_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(koru_${name} STATIC ${ARG_SOURCES})
  target_include_directories(koru_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(koru_${name} PUBLIC ${ARG_DEPENDS})
endfunction()
