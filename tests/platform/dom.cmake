# SPDX-License-Identifier: MIT
# The XML layer: through the shared library, and what it does not export.
dyadctx_add_test(platform_dom_test SOURCES
  VELIXMLDOMBuildTest.cpp
  VELIXMLDOMNodesTest.cpp
  VELIXMLDOMParseTest.cpp
  VELIXMLDOMPositionsTest.cpp
  VELIXMLDOMRoundTripTest.cpp
  VELIXMLDOMWriteTest.cpp
  XmlDiagnosisTest.cpp
  ENVIRONMENT "VELMessageLanguage=en")

dyadctx_add_test(platform_dom_private_test PRIVATE REPLACES_NEW SOURCES
  DomAllocationTest.cpp
  DomForgettingTest.cpp
  DomParserTest.cpp
  ENVIRONMENT "VELMessageLanguage=en")
target_link_libraries(platform_dom_private_test PRIVATE dyadctx_dom_faults)

dyadctx_add_test(platform_scanner_test PRIVATE SOURCES
  GeneratedXml.cpp
  PlainXmlScannerTest.cpp
  ../support/ScannerComparison.cpp)
dyadctx_test_paths(PlainXmlScannerTest.cpp ${source_folder})
