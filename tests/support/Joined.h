#pragma once

#include <sstream>
#include <string>

namespace kelvo::test {

/// Many fields as one text, so that a test states them in one line: numbers and texts joined by '|', the elements of
/// arrays by ','. Floats have six digits.
template <typename... Values>
std::string Joined(const Values&... values) {
    std::ostringstream out;
    const auto add = [&](const auto& value) {
        if (out.tellp() > 0) out << '|';
        if constexpr (requires { out << value; }) {
            out << value;
        } else {
            const char* comma = "";
            for (const auto& element : value) {
                out << comma << element;
                comma = ",";
            }
        }
    };
    // The first text may be empty: a bar in front of all keeps the count right.
    out << ' ';
    (add(values), ...);
    return out.str().substr(2);
}

}  // namespace kelvo::test
