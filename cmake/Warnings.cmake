# One place for the flags that every target is built with. Results must not depend on
# whether the compiler fuses a multiplication with an addition, so contraction is off.
add_library(kelvo_flags INTERFACE)
target_compile_options(kelvo_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Werror
  -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping and overlong copies inside std::string where there are none when it optimises (its
  # bugs 105651 and 105329). The sanitizer build watches for the real ones.
  target_compile_options(kelvo_flags INTERFACE
    -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()
if(KELVO_SANITIZE)
  # With its checks built in, GCC 12 takes parts of its own <functional> and <regex> for uninitialised.
  target_compile_options(kelvo_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -Wno-maybe-uninitialized)
  target_link_options(kelvo_flags INTERFACE -fsanitize=address,undefined)
endif()
