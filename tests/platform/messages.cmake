# SPDX-License-Identifier: MIT
# Tests of the message catalog and of the platform trace.

dyadctx_add_test(messages_test PRIVATE REPLACES_NEW SOURCES
  MessageFilesTest.cpp
  MessageLanguageTest.cpp
  MessagePlaceholdersTest.cpp
  MessageTextsTest.cpp
  MoCatalogTest.cpp
  OwnWordsTest.cpp
  PoFile.cpp
  VELDyadTraceTest.cpp
  VELMsgCatalogTest.cpp)
dyadctx_test_paths(MessageFilesTest.cpp ${source_folder})
dyadctx_test_paths(OwnWordsTest.cpp ${source_folder})

# Linked from the objects, it starts before the library's own static objects are made.
add_executable(diagnostics_probe DiagnosticsProbe.cpp)
target_link_libraries(diagnostics_probe PRIVATE dyadctx_objects)
dyadctx_test_program(diagnostics_probe)

dyadctx_add_test(diagnostics_environment_test SOURCES DiagnosticsEnvironmentTest.cpp)
add_dependencies(diagnostics_environment_test diagnostics_probe)
dyadctx_test_paths(DiagnosticsEnvironmentTest.cpp
  DYADCTX_DIAGNOSTICS_PROBE="$<TARGET_FILE:diagnostics_probe>")
