#include "batch/Report.h"

#include <algorithm>
#include <charconv>

#include "batch/Rows.h"
#include "tables/TableExport.h"

namespace kelvo {
namespace {

/// Columns that a text takes: its characters, not its bytes.
std::size_t Width(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string Padded(const std::string& text, std::size_t width, bool right) {
    const std::string blanks(width - std::min(width, Width(text)), ' ');
    return right ? blanks + text : text + blanks;
}

/// Length of the well-formed UTF-8 sequence at the head, 0 when there is none.
std::size_t SequenceAt(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80) return 0;
    const unsigned char second = byte(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool beyond = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
    return overlong || beyond ? 0 : length;
}

/// Whether JSON takes the text as a number as it stands.
bool IsJsonNumber(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    const std::size_t whole = std::min(text.find_first_not_of("0123456789"), text.size());
    if (whole == 0 || (whole > 1 && text[0] == '0')) return false;
    text.remove_prefix(whole);
    if (text.starts_with('.') && (text.size() < 2 || text[1] < '0' || text[1] > '9')) return false;
    return true;
}

std::string JsonNumber(std::string_view text) {
    text = Trimmed(text);
    if (!NumberOf(text)) return text.empty() ? "null" : JsonString(text);
    if (IsJsonNumber(text)) return std::string(text);
    char shortest[32];
    const auto end = std::to_chars(shortest, shortest + sizeof shortest, *NumberOf(text)).ptr;
    return {shortest, end};
}

std::string JsonValue(const Field& field) {
    const bool number = field.kind == Field::Kind::Number || field.kind == Field::Kind::Numbers;
    const auto one = [&](const std::string& value) { return number ? JsonNumber(value) : JsonString(value); };
    if (field.kind == Field::Kind::Text || field.kind == Field::Kind::Number) return one(field.values.at(0));
    std::string list = "[";
    for (const std::string& value : field.values) {
        if (list.size() > 1) list += ", ";
        list += one(value);
    }
    return list + "]";
}

void WriteSection(std::ostream& out, const Section& section, std::size_t mostRows, std::string_view indent) {
    const std::size_t shown = std::min(section.rows, mostRows);
    std::vector<std::vector<std::string>> lines = {section.heads};
    for (std::size_t i = 0; i < shown; ++i)
        lines.push_back(section.row(i));
    std::vector<std::size_t> widths(section.heads.size(), 0);
    std::vector<bool> numbers(section.heads.size(), true);
    for (std::size_t i = 0; i < lines.size(); ++i)
        for (std::size_t col = 0; col < widths.size(); ++col) {
            widths[col] = std::max(widths[col], Width(lines[i][col]));
            if (i > 0 && !lines[i][col].empty() && !NumberOf(lines[i][col])) numbers[col] = false;
        }
    out << indent << section.title << '\n';
    for (const auto& line : lines) {
        std::string text;
        for (std::size_t col = 0; col < widths.size(); ++col)
            text += "  " + Padded(Visible(Trimmed(line[col])), widths[col], numbers[col]);
        text.resize(text.find_last_not_of(' ') + 1);
        out << indent << text << '\n';
    }
    if (shown < section.rows) out << indent << "  ... " << section.rows - shown << " more (--all shows them)\n";
}

}  // namespace

std::string Visible(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool second = byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if (second) ++i;
        out += second || byte < ' ' || byte == 0x7F ? '?' : text[i];
    }
    return out;
}

Field TextField(std::string key, std::string label, std::string value, std::string beside) {
    return {std::move(key), std::move(label), Field::Kind::Text, {std::move(value)}, {}, std::move(beside)};
}

Field NumberField(std::string key, std::string label, std::string value, std::string unit, std::string beside) {
    return {std::move(key),     std::move(label), Field::Kind::Number,
            {std::move(value)}, std::move(unit),  std::move(beside)};
}

Field NumbersField(std::string key, std::string label, std::vector<std::string> values, std::string unit) {
    return {std::move(key), std::move(label), Field::Kind::Numbers, std::move(values), std::move(unit), {}};
}

Section SectionOf(std::string key, std::string title, std::vector<std::string> heads,
                  std::vector<std::vector<std::string>> rows) {
    Section section{std::move(key), std::move(title), std::move(heads), rows.size(), {}, {}};
    section.row = [kept = std::move(rows)](std::size_t i) { return kept.at(i); };
    return section;
}

void WriteText(std::ostream& out, const Report& report, std::size_t mostRows, std::string_view indent) {
    std::size_t width = 0;
    for (const Field& field : report.fields)
        width = std::max(width, Width(field.label));
    for (const Field& field : report.fields) {
        std::string text;
        for (const std::string& value : field.values)
            text += (text.empty() ? "" : ", ") + Visible(Trimmed(value));
        if (text.empty()) text = "-";
        for (const std::string* more : {&field.unit, &field.beside})
            if (!more->empty()) text += " " + *more;
        out << indent << Padded(field.label, width, false) << "  " << text << '\n';
    }
    for (const Section& section : report.sections)
        WriteSection(out, section, mostRows, indent);
}

namespace {

/// {"slope": "mV per decade", ...}; empty when no number has a unit.
std::string JsonUnits(const Report& report) {
    std::string units;
    for (const Field& field : report.fields)
        if (!field.unit.empty())
            units += (units.empty() ? "{" : ", ") + JsonString(field.key) + ": " + JsonString(field.unit);
    return units.empty() ? units : units + "}";
}

}  // namespace

void WriteJson(std::ostream& out, const Report& report, std::string_view before) {
    out << '{' << before;
    bool first = before.empty();
    const auto name = [&](const std::string& key) {
        out << (first ? "" : ", ") << JsonString(key) << ": ";
        first = false;
    };
    for (const Field& field : report.fields) {
        name(field.key);
        out << JsonValue(field);
    }
    if (const std::string units = JsonUnits(report); !units.empty()) {
        name("units");
        out << units;
    }
    for (const Section& section : report.sections) {
        name(section.key);
        out << "{\"columns\": [";
        for (std::size_t i = 0; i < section.heads.size(); ++i)
            out << (i > 0 ? ", " : "") << JsonString(section.heads[i]);
        out << "], \"rows\": [";
        for (std::size_t i = 0; i < section.rows && out; ++i) {
            std::string line = i > 0 ? ",\n [" : "\n [";
            const auto cells = section.row(i);
            for (std::size_t col = 0; col < cells.size(); ++col) {
                if (col > 0) line += ", ";
                const bool text = col < section.texts.size() && section.texts[col] && !cells[col].empty();
                line += text ? JsonString(cells[col]) : JsonCell(cells[col]);
            }
            out << line << ']';
        }
        out << "]}";
    }
    out << '}';
}

std::string CsvOf(const Report& report) {
    std::string csv;
    if (report.sections.empty()) return csv;
    const Section& section = report.sections.front();
    const auto line = [&](const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (i > 0) csv += ',';
            AppendCsvField(csv, cells[i]);
        }
        csv += "\r\n";
    };
    line(section.heads);
    for (std::size_t i = 0; i < section.rows; ++i)
        line(section.row(i));
    return csv;
}

std::string JsonString(std::string_view text) {
    std::string out = "\"";
    while (!text.empty()) {
        const std::size_t length = SequenceAt(text);
        const auto byte = static_cast<unsigned char>(text.front());
        if (length == 0) {
            out += "\xEF\xBF\xBD";
        } else if (byte < ' ') {
            constexpr std::string_view Digits = "0123456789abcdef";
            out += "\\u00";
            out += Digits[byte >> 4];
            out += Digits[byte & 15];
        } else {
            if (byte == '"' || byte == '\\') out += '\\';
            out += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return out + '"';
}

std::string JsonCell(std::string_view cell) {
    if (Trimmed(cell).empty()) return "null";
    return CellNumber(cell) ? JsonNumber(cell) : JsonString(cell);
}

}  // namespace kelvo
