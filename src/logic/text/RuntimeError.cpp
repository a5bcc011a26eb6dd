#include "text/RuntimeError.h"

#include <cmath>

namespace kelvo {

const char* ErrorText(ErrorNumber number) {
    switch (number) {
        case ErrorNumber::InvalidCall: return "Invalid procedure call or argument";
        case ErrorNumber::Overflow: return "Overflow";
        case ErrorNumber::OutOfMemory: return "Out of memory";
        case ErrorNumber::Subscript: return "Subscript out of range";
        case ErrorNumber::DivisionByZero: return "Division by zero";
        case ErrorNumber::TypeMismatch: return "Type mismatch";
        case ErrorNumber::BadFileName: return "Bad file name or number";
        case ErrorNumber::FileNotFound: return "File not found";
        case ErrorNumber::DeviceIo: return "Device I/O error";
        case ErrorNumber::DiskFull: return "Disk full";
        case ErrorNumber::InputPastEnd: return "Input past end of file";
        case ErrorNumber::PermissionDenied: return "Permission denied";
        case ErrorNumber::PathAccess: return "Path/File access error";
        case ErrorNumber::PathNotFound: return "Path not found";
        case ErrorNumber::Cancelled: return "Cancel was selected";
    }
    return "Application-defined or object-defined error";
}

double Finite(double value) {
    if (!std::isfinite(value)) throw RuntimeError(ErrorNumber::Overflow);
    return value;
}

double Divide(double a, double b) {
    if (b == 0) throw RuntimeError(ErrorNumber::DivisionByZero);
    return Finite(a / b);
}

}  // namespace kelvo
