#pragma once

#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

// Rows of text from outside: a column of numbers, or CSV whose first line may name its columns.

/// The number that a whole text is, blanks around it apart: sign, digits, one point, exponent, as the boxes of the
/// program take them. Unlike there nothing may follow: "12abc" is none, and neither is "12,5", for the decimal mark is
/// a point wherever Kelvo reads or writes.
std::optional<double> NumberOf(std::string_view text);
/// "'12,5' is no number; the decimal mark is a point".
std::string WhyNoNumber(std::string_view text);

/// Text without blanks, TABs and a CR around it.
std::string_view Trimmed(std::string_view text);

/// Whether a text begins as UTF-16 does, by its mark or by the zero bytes of its first letters.
bool IsUtf16(std::string_view bytes);
constexpr const char* WhyNoUtf16 = "this is UTF-16; save it as UTF-8";

/// Lines of a stream, one after the other, never more of it in memory than one line.
class LineReader {
 public:
    static constexpr std::size_t LongestLine = 65536;

    explicit LineReader(std::istream& in) : in_(in), buffer_(LongestLine + 1) {}
    /// The next line without its end, CR LF or LF; none at the end of the stream.
    std::optional<std::string_view> Next();
    /// Number of the line just read, from 1.
    long Number() const { return number_; }
    /// Whether that line was longer than `LongestLine`; only its head was handed out.
    bool TooLong() const { return tooLong_; }
    /// Whether the next line would have to be waited for.
    bool Drained() const { return in_.rdbuf()->in_avail() <= 0; }

 private:
    std::istream& in_;
    std::vector<char> buffer_;
    long number_ = 0;
    bool tooLong_ = false;
};

/// What parts the fields of a line: a TAB or a semicolon where the line has one, else a comma.
char SeparatorOf(std::string_view line);
/// Fields of a line, trimmed; between double quotes separators count as text and doubled quotes are single ones.
void SplitFields(std::string_view line, char separator, std::vector<std::string>& fields);

/// The rows of a text: which columns there are, and whether the first line names them.
struct RowsHead {
    char separator = ',';
    bool named = false;               ///< the first line holds names
    std::vector<std::string> fields;  ///< of the first line
};
RowsHead HeadOf(std::string_view firstLine);

/// Column whose name is one of `names`, without regard to case.
std::optional<std::size_t> ColumnNamed(const RowsHead& head, const std::vector<std::string>& names);

}  // namespace kelvo
