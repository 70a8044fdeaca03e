# SPDX-License-Identifier: MIT
# Compiler settings every target of the project shares.

# dyadctx_compile_options(TARGET): language level, hidden symbols, warnings, sanitizers.
function(dyadctx_compile_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
      -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wcast-qual -Wformat=2 -Wundef
      -Wdouble-promotion -Wimplicit-fallthrough)
    # The published interface has members such as _Contexts and functions such as
    # _CDCDyadTraceLog. Their names are fixed, so the warning on reserved names is off.
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
      # g++ 12 warns of null pointers inside the standard library when it optimises.
      target_compile_options(${target} PRIVATE -Wno-reserved-identifier -Wnull-dereference)
    else()
      # When it optimises, g++ 12 also warns of overlapping copies wherever a literal and a string are
      # joined, of optional members as if they were used while there are none, and of the address of a
      # local object although its destructor takes it back.
      target_compile_options(${target} PRIVATE -Wduplicated-cond -Wlogical-op
        $<$<NOT:$<CONFIG:Debug>>:-Wno-restrict;-Wno-maybe-uninitialized;-Wno-dangling-pointer>)
    endif()
    if(MINGW)
      # As each source is optimised alone, it also warns of impossible sizes of joined texts.
      target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
    endif()
    if(CMAKE_CXX_COMPILER_LAUNCHER AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # A cache preprocesses a source apart from compiling it, which leaves no precompiled headers.
      target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
    if(DYADCTX_WERROR)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
  if(DYADCTX_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${DYADCTX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${DYADCTX_SANITIZE})
  endif()
endfunction()

# dyadctx_precompile(TARGET HEADERS...): headers of others that most sources of the target include are
# parsed once. Each source names what it uses all the same: the release preset has no precompiled
# headers.
if(CMAKE_CXX_COMPILER_LAUNCHER AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # clang's contain the folder of the build, so that checkouts would share nothing in a cache.
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()
function(dyadctx_precompile target)
  list(TRANSFORM ARGN REPLACE "(.+)" "<\\1>" OUTPUT_VARIABLE headers)
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()

# dyadctx_cheap_to_compile(TARGET): for tests and the tool, which are compiled more often than they are
# debugged or waited for.
function(dyadctx_cheap_to_compile target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE $<$<CONFIG:Debug>:-g1>)
    if(DYADCTX_SANITIZE)
      target_compile_options(${target} PRIVATE -O0)
    endif()
  endif()
endfunction()

# dyadctx_link_options(TARGET): how the shared library is linked.
function(dyadctx_link_options target)
  if(DYADCTX_SANITIZE)
    target_link_options(${target} PRIVATE -fsanitize=${DYADCTX_SANITIZE})
  elseif(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    # Nothing of Expat may leak out of the library, and nothing may be left unresolved.
    set(map ${PROJECT_SOURCE_DIR}/cmake/exported.map)
    target_link_options(${target} PRIVATE
      -Wl,--no-undefined -Wl,--exclude-libs,ALL -Wl,--version-script=${map})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
  endif()
endfunction()

include(CheckIPOSupported)
check_ipo_supported(RESULT dyadctx_ipo_supported OUTPUT dyadctx_ipo_reason LANGUAGES CXX)

# dyadctx_optimise_across_sources(TARGET): in release builds, small functions of one source are
# inlined into another. Reading a file calls them tens of times per context.
function(dyadctx_optimise_across_sources target)
  # With mingw-w64 not: every test program that links the objects would optimise all of them anew.
  if(dyadctx_ipo_supported AND NOT DYADCTX_SANITIZE AND NOT MINGW)
    set_target_properties(${target} PROPERTIES
      INTERPROCEDURAL_OPTIMIZATION_RELEASE ON
      INTERPROCEDURAL_OPTIMIZATION_MINSIZEREL ON)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      # The tests link the same objects, but as they are.
      target_compile_options(${target} PRIVATE
        $<$<CONFIG:Release,MinSizeRel>:-ffat-lto-objects>)
    endif()
  endif()
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    # An exported function is called directly from within the library, not looked up at run time.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  endif()
endfunction()
