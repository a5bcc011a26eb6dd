#pragma once

namespace kelvo {

/// Numbers are written with a dot wherever the desktop stands: the program, its tests and its benchmarks call this
/// once, after Qt has taken over the desktop's locale. Everything that the program reads or writes goes through
/// text/Number and asks no locale; this keeps the libraries beneath from doing so.
void SetProgramLocale();

}  // namespace kelvo
