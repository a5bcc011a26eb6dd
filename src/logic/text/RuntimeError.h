#pragma once

#include <stdexcept>
#include <string>

namespace kelvo {

/// Numbers of the run-time failures that Kelvo knows by name.
enum class ErrorNumber : int {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    Subscript = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    FileNotFound = 53,
    DeviceIo = 57,
    DiskFull = 61,
    InputPastEnd = 62,
    BadFileName = 52,
    PermissionDenied = 70,
    PathAccess = 75,
    PathNotFound = 76,
    Cancelled = 32755,  ///< a file dialog that the analyst cancelled; never shown
};

/// The text that belongs to a number, as the messages show it: "Input past end of file" for 62.
const char* ErrorText(ErrorNumber number);

/// A failure that has a number and a text. It is caught where a step's behaviour says so and nowhere else.
class RuntimeError : public std::runtime_error {
 public:
    explicit RuntimeError(ErrorNumber number) : std::runtime_error(ErrorText(number)), number_(number) {}
    ErrorNumber Number() const { return number_; }
    int Code() const { return static_cast<int>(number_); }

 private:
    ErrorNumber number_;
};

/// Gives `value` back when it is a finite number.
/// @throws RuntimeError 6 when a step of the arithmetic has overflowed or has no value.
double Finite(double value);

/// a / b. @throws RuntimeError 11 when b is 0, 6 when the quotient overflows.
double Divide(double a, double b);

}  // namespace kelvo
