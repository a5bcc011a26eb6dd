#include "text/Number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>

#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// A value other than its sign: digits d0 d1 d2 ... with d0 worth 10^exponent. No digits is zero.
struct Decimal {
    std::array<char, 24> digits;
    int count = 0;
    int exponent = 0;

    char At(int power) const {
        const int index = exponent - power;
        return index >= 0 && index < count ? digits[static_cast<std::size_t>(index)] : '0';
    }
};

void DropTrailingZeros(Decimal& decimal) {
    while (decimal.count > 0 && decimal.digits[static_cast<std::size_t>(decimal.count - 1)] == '0')
        --decimal.count;
    if (decimal.count == 0) decimal.exponent = 0;
}

/// Takes "d.ddde-xx" apart, the one form that `std::to_chars` gives.
Decimal FromScientific(const char* at, const char* end) {
    Decimal decimal;
    // The exponent has two digits or three, so its mark is found from behind.
    const char* mark = end - 4;
    if (*mark != 'e') --mark;
    decimal.digits[0] = *at;
    decimal.count = 1;
    if (const auto behind = mark - at - 2; behind > 0) {
        std::memcpy(decimal.digits.data() + 1, at + 2, static_cast<std::size_t>(behind));
        decimal.count += static_cast<int>(behind);
    }
    const bool negative = mark[1] == '-';
    for (at = mark + 2; at != end; ++at)
        decimal.exponent = decimal.exponent * 10 + (*at - '0');
    if (negative) decimal.exponent = -decimal.exponent;
    DropTrailingZeros(decimal);
    return decimal;
}

template <typename Real>
Decimal ShortestDigits(Real value) {
    char buffer[48];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::abs(value), std::chars_format::scientific);
    return FromScientific(buffer, result.ptr);
}

/// The value that the analyst would write down: as many digits as the width surely carries.
template <typename Real>
Decimal WrittenDigits(Real value) {
    constexpr int behindFirst = std::is_same_v<Real, float> ? 6 : std::numeric_limits<Real>::digits10 - 1;
    char buffer[48];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, std::abs(value), std::chars_format::scientific, behindFirst);
    return FromScientific(buffer, result.ptr);
}

/// Keeps the first `keep` digits, half away from zero. A carry out of the front moves the exponent.
void RoundTo(Decimal& decimal, int keep) {
    if (keep >= decimal.count) return;
    const bool up = keep >= 0 && decimal.digits[static_cast<std::size_t>(keep)] >= '5';
    decimal.count = std::max(keep, 0);
    if (!up) {
        DropTrailingZeros(decimal);
        return;
    }
    while (decimal.count > 0 && decimal.digits[static_cast<std::size_t>(decimal.count - 1)] == '9')
        --decimal.count;
    if (decimal.count > 0) {
        ++decimal.digits[static_cast<std::size_t>(decimal.count - 1)];
        return;
    }
    decimal.digits[0] = '1';
    decimal.count = 1;
    ++decimal.exponent;
}

/// What a mask asks for, found in one pass.
struct Mask {
    static constexpr std::size_t None = std::string_view::npos;
    int wholePlaces = 0;     ///< `0` and `#` before the dot
    int wholeLeast = 0;      ///< of these, from the first `0` on
    int fractionPlaces = 0;  ///< `0` and `#` behind the dot
    int fractionLeast = 0;   ///< of these, up to the last `0`
    std::size_t firstWhole = None, lastWhole = 0;
    std::size_t dot = None;
    std::size_t exponent = None;  ///< where `E` stands
    std::size_t exponentEnd = 0;
    bool groups = false;

    bool HasPlaces() const { return wholePlaces + fractionPlaces > 0; }
    bool GroupingAt(std::size_t at) const { return groups && at > firstWhole && at < lastWhole; }
};

void TakePlace(Mask& mask, char place, std::size_t at) {
    if (mask.dot != Mask::None) {
        ++mask.fractionPlaces;
        if (place == '0') mask.fractionLeast = mask.fractionPlaces;
        return;
    }
    if (mask.firstWhole == Mask::None) mask.firstWhole = at;
    mask.lastWhole = at;
    ++mask.wholePlaces;
    if (place == '0' || mask.wholeLeast > 0) ++mask.wholeLeast;
}

/// Whether "E-0" or "E+0" stands at `at`.
bool ExponentAt(std::string_view mask, std::size_t at) {
    return (mask[at] == 'E' || mask[at] == 'e') && at + 2 < mask.size() &&
           (mask[at + 1] == '-' || mask[at + 1] == '+') && mask[at + 2] == '0';
}

Mask ParseMask(std::string_view text) {
    Mask mask;
    std::size_t comma = Mask::None;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '0' || c == '#') {
            TakePlace(mask, c, at);
        } else if (c == '.' && mask.dot == Mask::None) {
            mask.dot = at;
        } else if (c == ',' && mask.dot == Mask::None && mask.wholePlaces > 0 && comma == Mask::None) {
            comma = at;
        } else if (mask.HasPlaces() && ExponentAt(text, at)) {
            mask.exponent = at;
            mask.exponentEnd = std::min(text.find_first_not_of('0', at + 2), text.size());
            break;
        }
    }
    mask.groups = comma < mask.lastWhole;
    return mask;
}

void AppendWholeDigits(std::string& out, const Decimal& decimal, int from, int to, bool groups) {
    for (int power = from; power >= to; --power) {
        out += decimal.At(power);
        if (groups && power > 0 && power % 3 == 0) out += ',';
    }
}

void AppendExponent(std::string& out, std::string_view form, int exponent) {
    out += form[0];
    if (exponent < 0) {
        out += '-';
    } else if (form[1] == '+') {
        out += '+';
    }
    char digits[8];
    const auto result = std::to_chars(digits, digits + sizeof digits, std::abs(exponent));
    const auto length = static_cast<std::size_t>(result.ptr - digits);
    const std::size_t least = form.size() - 2;
    if (length < least) out.append(least - length, '0');
    out.append(digits, length);
}

/// Walks through the mask and sets the digits in their places. Digits that have no place of their own go in
/// front of the first one.
void AppendByMask(std::string& out, std::string_view text, const Mask& mask, const Decimal& decimal, int exponent) {
    const int held = decimal.count > 0 ? std::max(decimal.exponent + 1, 0) : 0;
    const int least = mask.exponent == Mask::None ? mask.wholeLeast : std::max(mask.wholeLeast, 1);
    const int whole = std::max(held, least);
    const int fraction = std::max(decimal.count - decimal.exponent - 1, mask.fractionLeast);
    int nextPower = mask.wholePlaces - 1, nextFraction = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (at == mask.exponent) {
            AppendExponent(out, text.substr(at, mask.exponentEnd - at), exponent);
            out += text.substr(mask.exponentEnd);
            return;
        }
        if (at == mask.dot) {
            if (mask.wholePlaces == 0) AppendWholeDigits(out, decimal, whole - 1, 0, false);
            out += '.';
        } else if ((c == '0' || c == '#') && at < mask.dot) {
            const int from = at == mask.firstWhole ? whole - 1 : std::min(nextPower, whole - 1);
            AppendWholeDigits(out, decimal, from, nextPower, mask.groups);
            --nextPower;
        } else if (c == '0' || c == '#') {
            if (nextFraction < fraction) out += decimal.At(-1 - nextFraction);
            ++nextFraction;
        } else if (c != ',' || !mask.GroupingAt(at)) {
            out += c;
        }
    }
}

template <typename Real>
std::string FormatReal(Real value, std::string_view text) {
    if (!std::isfinite(value)) throw RuntimeError(ErrorNumber::Overflow);
    const Mask mask = ParseMask(text);
    Decimal decimal = WrittenDigits(value);
    int exponent = 0;
    if (mask.exponent != Mask::None) {
        const int places = std::max(mask.wholePlaces, 1);
        RoundTo(decimal, places + mask.fractionPlaces);
        if (decimal.count > 0) {
            exponent = decimal.exponent - (places - 1);
            decimal.exponent = places - 1;
        }
    } else {
        RoundTo(decimal, decimal.exponent + 1 + mask.fractionPlaces);
    }
    const int whole = std::max(decimal.exponent + 1, 0);
    std::string out;
    out.reserve(text.size() + static_cast<std::size_t>(whole + (mask.groups ? whole / 3 : 0)) + 1);
    if (value < 0 && decimal.count > 0) out += '-';
    AppendByMask(out, text, mask, decimal, exponent);
    return out;
}

/// Exponents of ten that are written without an exponent, from this one up to below `PlainEnd`.
constexpr int PlainFirst = -5;
template <typename Real>
constexpr int PlainEnd = std::is_same_v<Real, float> ? 7 : 15;

char* PlainText(char* out, const Decimal& decimal) {
    if (decimal.exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -decimal.exponent - 1, '0');
        return std::copy_n(decimal.digits.data(), decimal.count, out);
    }
    for (int power = decimal.exponent; power >= 0; --power)
        *out++ = decimal.At(power);
    const int whole = decimal.exponent + 1;
    if (decimal.count <= whole) return out;
    *out++ = '.';
    return std::copy_n(decimal.digits.data() + whole, decimal.count - whole, out);
}

char* ExponentText(char* out, const Decimal& decimal) {
    *out++ = decimal.digits[0];
    if (decimal.count > 1) {
        *out++ = '.';
        out = std::copy_n(decimal.digits.data() + 1, decimal.count - 1, out);
    }
    *out++ = 'E';
    *out++ = decimal.exponent < 0 ? '-' : '+';
    const int size = std::abs(decimal.exponent);
    if (size < 10) *out++ = '0';
    return std::to_chars(out, out + 4, size).ptr;
}

/// The one float (of either sign) whose shortest text, "7.038531E-26", lies so near to the middle between two floats
/// that read as a double and rounded to a float it gives the neighbour; found by trying every float there is.
constexpr float TieByDouble = 7.0385307e-26F;

template <typename Real>
Decimal ReadableDigits(Real value) {
    if constexpr (std::is_same_v<Real, float>) {
        if (std::abs(value) == TieByDouble) return {{'7', '0', '3', '8', '5', '3', '0', '7'}, 8, -26};
    }
    return ShortestDigits(value);
}

template <typename Real>
std::string ShortestText(Real value, bool leadingBlank) {
    if (!std::isfinite(value)) throw RuntimeError(ErrorNumber::Overflow);
    char buffer[48];
    char* out = buffer;
    if (value < 0) {
        *out++ = '-';
    } else if (leadingBlank) {
        *out++ = ' ';
    }
    const Decimal decimal = ReadableDigits(value);
    const bool plain = decimal.exponent >= PlainFirst && decimal.exponent < PlainEnd<Real>;
    out = plain ? PlainText(out, decimal) : ExponentText(out, decimal);
    return std::string(buffer, out);
}

/// Whether a number that has no double lies above them all, not below the smallest.
bool LiesAbove(std::string_view number) {
    const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mark);
    const std::size_t dot = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = mantissa.find_first_of("123456789");
    const auto place = static_cast<long long>(dot) - static_cast<long long>(first);
    if (mark == number.size()) return place > 0;
    constexpr long long FarOut = 1'000'000'000'000'000;
    long long exponent = 0;
    for (std::size_t at = mark + 1; at < number.size(); ++at) {
        if (IsDigit(number[at])) exponent = std::min(exponent * 10 + (number[at] - '0'), FarOut);
    }
    return (number[mark + 1] == '-' ? -exponent : exponent) + place > 0;
}

struct CaseRow {
    char32_t lower, upper;
};
/// Letters of the code page whose capital is not 0x20 below.
constexpr std::array<CaseRow, 4> OddCapitals{{{0xFF, 0x178}, {0x153, 0x152}, {0x161, 0x160}, {0x17E, 0x17D}}};

char32_t Capital(char32_t c) {
    constexpr char32_t DivisionSign = 0xF7;
    if (c >= 0xE0 && c <= 0xFE && c != DivisionSign) return c - 0x20;
    for (const CaseRow& row : OddCapitals) {
        if (row.lower == c) return row.upper;
    }
    return c;
}

constexpr char AsciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Takes digits off the head. @return whether there were any
bool TakeDigits(std::string_view& text) {
    const std::size_t before = text.size();
    while (!text.empty() && IsDigit(text.front()))
        text.remove_prefix(1);
    return text.size() < before;
}

bool TakeOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

}  // namespace

double Val(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) return 0;
    const char* at = text.data() + start;
    const char* const end = text.data() + text.size();
    const bool negative = *at == '-';
    if (negative || *at == '+') ++at;
    // What follows must be a digit or a dot: the library would also take "inf", "nan" and a second sign.
    if (at == end || !(IsDigit(*at) || *at == '.')) return 0;
    double value = 0;
    const auto [stop, failure] = std::from_chars(at, end, value);
    if (failure == std::errc::invalid_argument) return 0;
    const bool unrepresentable = failure == std::errc::result_out_of_range || std::isinf(value);
    if (unrepresentable) {
        const std::string_view number(at, static_cast<std::size_t>(stop - at));
        value = LiesAbove(number) ? std::numeric_limits<double>::max() : 0;
    }
    return value == 0 ? 0 : negative ? -value : value;
}

bool IsNumber(std::string_view text) {
    TakeOneOf(text, "+-");
    const bool whole = TakeDigits(text);
    const bool fraction = TakeOneOf(text, ".") && TakeDigits(text);
    if (!whole && !fraction) return false;
    if (!TakeOneOf(text, "Ee")) return text.empty();
    TakeOneOf(text, "+-");
    return TakeDigits(text) && text.empty();
}

std::string Str(double value) {
    return ShortestText(value, true);
}
std::string Str(float value) {
    return ShortestText(value, true);
}
std::string Str(int value) {
    return value < 0 ? std::to_string(value) : ' ' + std::to_string(value);
}

std::string TrimStr(double value) {
    return ShortestText(value, false);
}
std::string TrimStr(float value) {
    return ShortestText(value, false);
}
std::string TrimStr(int value) {
    return std::to_string(value);
}

std::string Format(double value, std::string_view mask) {
    return FormatReal(value, mask);
}
std::string Format(float value, std::string_view mask) {
    return FormatReal(value, mask);
}

std::int16_t ToInt16(double value) {
    const double whole = std::nearbyint(value);
    if (!(whole >= -32768.0 && whole <= 32767.0)) throw RuntimeError(ErrorNumber::Overflow);
    return static_cast<std::int16_t>(whole);
}

float ToSingle(double value) {
    // Halfway between the largest float and the next power of two: from here on rounding leaves the range.
    constexpr double Beyond = 0x1.ffffffp127;
    if (!(std::abs(value) < Beyond)) throw RuntimeError(ErrorNumber::Overflow);
    return static_cast<float>(value);
}

std::string Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string Upper(std::string_view text) {
    std::string out(text);
    for (std::size_t at = 0; at < out.size(); ++at) {
        const auto lead = static_cast<unsigned char>(out[at]);
        if (lead < 0x80) {
            out[at] = AsciiUpper(out[at]);
            continue;
        }
        // Every letter concerned and its capital are two bytes long, so the text keeps its length.
        const bool twoBytes = lead >= 0xC2 && lead <= 0xDF && at + 1 < out.size() && (out[at + 1] & 0xC0) == 0x80;
        if (!twoBytes) continue;
        const char32_t capital = Capital(static_cast<char32_t>((lead & 0x1F) << 6 | (out[at + 1] & 0x3F)));
        out[at] = static_cast<char>(0xC0 | capital >> 6);
        out[++at] = static_cast<char>(0x80 | (capital & 0x3F));
    }
    return out;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return AsciiUpper(x) == AsciiUpper(y); });
}

}  // namespace kelvo
