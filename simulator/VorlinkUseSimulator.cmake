# vorlink_use_simulator(target [manifest])
#
# Makes a program meet the simulated platform: puts beside it a manifest that registers the platform's class in
# vorlink_simulator.dll, and the DLLs that it needs. Without the manifest it meets the real platform again. A manifest of
# the program's own has to have the entries of simulator.manifest. It counts because the program has none inside.
function(vorlink_use_simulator target)
  set(manifest ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/simulator.manifest)
  if(ARGC GREATER 1)
    set(manifest ${ARGV1})
  endif()
  # The first two also for a program that does not link them: vorlink_c.dll loads the one, the platform the other.
  set(dlls $<TARGET_FILE:Vorlink::Vorlink> $<TARGET_FILE:Vorlink::Simulator> $<TARGET_RUNTIME_DLLS:${target}>)
  if(MSVC)
    target_link_options(${target} PRIVATE /MANIFEST:NO)
  endif()
  add_dependencies(${target} Vorlink::Vorlink Vorlink::Simulator)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${manifest} $<TARGET_FILE:Vorlink::Vorlink>
                                                $<TARGET_FILE:Vorlink::Simulator>)
  add_custom_command(
    TARGET ${target}
    POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy ${manifest} $<TARGET_FILE:${target}>.manifest
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${dlls} $<TARGET_FILE_DIR:${target}>
    COMMAND_EXPAND_LISTS VERBATIM)
endfunction()
