# One place for the flags that every target of the house is built with. Results must not depend on
# whether the compiler fuses a multiplication with an addition, so contraction is off.
add_library(kelvo_flags INTERFACE)
target_compile_options(kelvo_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Werror
  -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies in "literal" + std::string&& when it optimises (its bug 105651).
  target_compile_options(kelvo_flags INTERFACE -Wno-restrict)
endif()
if(KELVO_SANITIZE)
  target_compile_options(kelvo_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kelvo_flags INTERFACE -fsanitize=address,undefined)
endif()
