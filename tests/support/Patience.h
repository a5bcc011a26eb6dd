#pragma once

namespace kelvo::test {

/// The longest wait, in milliseconds, for what has to come: long enough for a machine that does a hundred other things.
/// What goes well waits for none of it.
constexpr int PatienceMs = 120'000;

}  // namespace kelvo::test
