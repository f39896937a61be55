# zanto_internals(TARGET OBJECT_LIBRARY...): makes TARGETInternals, a static library with the
# objects of TARGET and of its object libraries, for programs that use unexported parts of TARGET,
# above all tests. It links the Internals of our libraries that TARGET links. A program links either
# TARGET or TARGETInternals, never both, because each object with static storage would then exist
# twice.
#
# Call it after the last target_link_libraries of TARGET. It is built only if a target needs it.
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
