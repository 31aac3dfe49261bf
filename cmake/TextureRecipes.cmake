# add_textures(target recipes out): makes the pictures of all recipes of a folder, each again only when its recipe or the
# tool changed.
function(add_textures target recipes out)
  file(GLOB files CONFIGURE_DEPENDS ${recipes}/*.json)
  set(pictures)
  foreach(file IN LISTS files)
    get_filename_component(name ${file} NAME_WE)
    set(made ${out}/${name}.png)
    file(STRINGS ${file} normals REGEX "\"normals\"")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    if(normals)
      list(APPEND made ${out}/${name}_normal.png)
    endif()
    add_custom_command(OUTPUT ${made}
      COMMAND texture-recipes --recipes ${recipes} --out ${out} --only ${name} --normals
      DEPENDS ${file} texture-recipes
      COMMENT "Texture ${name}"
      VERBATIM)
    list(APPEND pictures ${made})
  endforeach()
  add_custom_target(${target} DEPENDS ${pictures})
endfunction()

# add_sky(target out): makes the six faces of the sky box, again only when the tool changed.
function(add_sky target out)
  set(faces)
  foreach(face back front left right top bottom)
    list(APPEND faces ${out}/cube01_${face}.jpg)
  endforeach()
  add_custom_command(OUTPUT ${faces}
    COMMAND texture-recipes --sky ${out}
    DEPENDS texture-recipes
    COMMENT "Sky box"
    VERBATIM)
  add_custom_target(${target} DEPENDS ${faces})
endfunction()
