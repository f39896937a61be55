# zanto_internals(TARGET OBJECT_LIBRARY...): makes TARGETInternals, the objects of TARGET and of the
# object libraries that it is made of as a static library, for programs that look behind what TARGET
# offers: tests, above all. Of our libraries that TARGET links it takes the same. A program links the
# one or the other, never both: there would be two of everything that there is once.
#
# Called when TARGET links all that it links; built only when somebody needs it.
function(zanto_internals target)
    get_target_property(libraries ${target} LINK_LIBRARIES)
    list(TRANSFORM libraries REPLACE "^(Zanto(PlayerFramework|Host[A-Za-z]+))$" "\\1Internals")
    set(objects $<TARGET_OBJECTS:${target}>)
    foreach(library IN LISTS ARGN)
        list(APPEND objects $<TARGET_OBJECTS:${library}>)
    endforeach()
    add_library(${target}Internals STATIC EXCLUDE_FROM_ALL ${objects})
    set_target_properties(${target}Internals PROPERTIES LINKER_LANGUAGE CXX)
    target_compile_features(${target}Internals PUBLIC cxx_std_20)
    target_include_directories(${target}Internals PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target}Internals PUBLIC ${libraries})
endfunction()
