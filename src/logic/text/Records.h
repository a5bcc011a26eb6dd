#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kelvo {

// The record rules that calibration and dump files share. Buffers are bytes of the code page as they stand
// in the file; texts given and taken are UTF-8.

/// Builds a file of records, one value a line ended by CR LF.
class RecordWriter {
 public:
    /// A float in shortest decimal form, no blank: `-61.5`, `2`, `1.5E-30`. @throws RuntimeError 6 if not finite.
    void Write(float value);
    /// A text between double quotes. Quotes inside it stand as they are where the reader gives the text back so
    /// (`A "B"` is `"A "B""`), else each of them twice (`A", B` is `"A"", B"`).
    /// @throws RuntimeError 5 for a line break or a character that the code page lacks; nothing is written then.
    void Write(std::string_view text);
    /// A line as it stands, no quotes. @throws RuntimeError 5 for a character that the code page lacks.
    void Print(std::string_view line);
    const std::string& Bytes() const { return bytes_; }

 private:
    std::string bytes_;
};

/// Takes a file of records apart, field by field. A line ends at LF, CR LF or CR; the last one may lack its end.
/// A comma at the end of a line is followed by one more, empty field. The bytes must outlive the reader.
class RecordReader {
 public:
    explicit RecordReader(std::string_view bytes) : rest_(bytes) {}

    bool AtEnd() const { return rest_.empty(); }

    /// Input rule: a field ends at the line end or at a comma outside quotes (each quote toggles); the quotes around
    /// it are removed, with blanks outside them, and doubled quotes between them are single ones.
    /// @throws RuntimeError 62 at the end of the file.
    std::string Text();
    /// The number at the head of the next field. @throws RuntimeError 62 at the end, 6 beyond the range of a float.
    float Number();
    /// Next number as a whole number of 16 bits. @throws RuntimeError 62 at the end, 6 out of range.
    int Whole();
    /// List semantics of the table files: leading blanks and tabs fall away, a comma ends the item and the rest
    /// of the line is the next item, an item that starts with a double quote ends at the next double quote
    /// (what stands between that quote and the following comma or line end is passed over), or at the line end
    /// when there is none.
    /// @throws RuntimeError 62 at the end.
    std::string Item();
    /// A whole line without its end. @throws RuntimeError 62 at the end.
    std::string Line();

 private:
    std::string_view rest_;
};

}  // namespace kelvo
