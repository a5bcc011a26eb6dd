#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

class DataTable;

/// One thing that a report tells, under a name for people and one for machines.
struct Field {
    enum class Kind { Text, Number, Texts, Numbers };
    std::string key, label;
    Kind kind = Kind::Text;
    std::vector<std::string> values;  ///< one, or those of a list
    std::string unit;                 ///< of a number
    std::string beside;               ///< for people alone: a deviation, what it rests on
};
Field TextField(std::string key, std::string label, std::string value, std::string beside = {});
/// A number as text; one that is none counts as text, an empty one as missing.
Field NumberField(std::string key, std::string label, std::string value, std::string unit = {},
                  std::string beside = {});
Field NumbersField(std::string key, std::string label, std::vector<std::string> values, std::string unit = {});

/// Rows under heads.
struct Section {
    std::string key, title;
    std::vector<std::string> heads;
    std::size_t rows = 0;
    std::function<std::vector<std::string>(std::size_t)> row;  ///< as many cells as heads
    std::vector<bool> texts;  ///< columns of names and times, which stay texts; the others may be numbers
};
Section SectionOf(std::string key, std::string title, std::vector<std::string> heads,
                  std::vector<std::vector<std::string>> rows);

/// What a command has to say, before it becomes text, JSON or CSV. Numbers are texts as the screens show them.
struct Report {
    std::vector<Field> fields;
    std::vector<Section> sections;
    std::function<std::string()> csv;        ///< the program's own export of it; empty: the first section
    std::string told;                        ///< what is to be told beside it, on the error line
    std::shared_ptr<const DataTable> table;  ///< the rows, where it is a table of the program
    std::function<std::string()> csvHead;    ///< what that export has in a second file, "NAME-head.csv"
};

/// Lines of label and value under each other, then the sections with aligned columns.
/// @param mostRows  rows of a section that are shown; what is left out is told
void WriteText(std::ostream& out, const Report& report, std::size_t mostRows, std::string_view indent = {});

/// The same as one JSON object (RFC 8259, UTF-8). A section is {"columns": [...], "rows": [[...], ...]}; a cell that is
/// a plain decimal number is a number where its column does not hold texts, an empty one null. The units of the numbers
/// stand in an object "units", under the names of the numbers.
/// @param before  members that come first, as they stand
void WriteJson(std::ostream& out, const Report& report, std::string_view before = {});

/// The first section as CSV: UTF-8, RFC 4180, CR LF.
std::string CsvOf(const Report& report);

/// The text for a terminal, which obeys no file: control characters become question marks.
std::string Visible(std::string_view text);

/// A JSON string with its quotes. Bytes that are no UTF-8 become U+FFFD.
std::string JsonString(std::string_view text);
/// A cell as JSON: a number, null or a string.
std::string JsonCell(std::string_view cell);

}  // namespace kelvo
