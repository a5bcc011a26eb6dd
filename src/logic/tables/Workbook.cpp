#include "tables/Workbook.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <limits>

#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr int BoldStyle = 1, TextStyle = 2, FirstFormat = 3;

/// Longest text of a cell that spreadsheets take, in units of UTF-16.
constexpr int LongestText = 32767;

const char* const XmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const char* const Package = "http://schemas.openxmlformats.org/package/2006/";
const char* const Office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const char* const Main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const char* const Type = "application/vnd.openxmlformats-officedocument.spreadsheetml.";

void Little(std::string& out, std::uint32_t value, int bytes) {
    for (; bytes > 0; --bytes, value >>= 8)
        out += static_cast<char>(value & 0xFF);
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string Put(std::initializer_list<std::string_view> parts) {
    std::string out;
    for (const std::string_view part : parts)
        out += part;
    return out;
}

/// Whether what begins here would be read as an escaped character: "_x000D_".
bool LooksEscaped(std::string_view text) {
    return text.size() >= 7 && text[0] == '_' && text[1] == 'x' && text[6] == '_' &&
           std::all_of(text.begin() + 2, text.begin() + 6,
                       [](char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); });
}

std::string Escaped(std::string_view text) {
    static const char* const Hex = "0123456789ABCDEF";
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto code = static_cast<unsigned char>(c);
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '"')
            out += "&quot;";
        else if (code < 0x20 && c != '\t' && c != '\n')
            out += std::string("_x00") + Hex[code >> 4] + Hex[code & 15] + "_";
        else if (LooksEscaped(text.substr(i)))
            out += "_x005F_";
        else
            out += c;
    }
    return out;
}

/// The head of the text that a cell can hold.
std::string_view Fitting(std::string_view text) {
    if (text.size() <= LongestText) return text;
    int units = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        if ((code & 0xC0) == 0x80) continue;
        units += code >= 0xF0 ? 2 : 1;
        if (units > LongestText) return text.substr(0, i);
    }
    return text;
}

std::string ColumnName(int col) {
    std::string name;
    for (++col; col > 0; col = (col - 1) / 26)
        name.insert(name.begin(), static_cast<char>('A' + (col - 1) % 26));
    return name;
}

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

/// The parts of a number's text.
struct Digits {
    bool negative = false;
    std::string_view whole, decimals;
    bool exponent = false;
    std::string_view exponentDigits;
};

bool TakeDigits(std::string_view& rest, std::string_view& digits) {
    const auto end = std::find_if_not(rest.begin(), rest.end(), IsDigit);
    digits = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(digits.size());
    return !digits.empty();
}

bool Parse(std::string_view text, Digits& out) {
    text = Trimmed(text);
    if (text.starts_with('-')) {
        out.negative = true;
        text.remove_prefix(1);
    }
    const bool whole = TakeDigits(text, out.whole);
    bool decimals = false;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        decimals = TakeDigits(text, out.decimals);
        if (!decimals) return false;
    }
    if (!whole && !decimals) return false;
    if (text.empty()) return true;
    if (text[0] != 'E' && text[0] != 'e') return false;
    text.remove_prefix(1);
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    out.exponent = true;
    return TakeDigits(text, out.exponentDigits) && text.empty() && out.exponentDigits.size() <= 3;
}

/// Number format that shows the digits of the text again: "0.00", "0.00E-0".
std::string FormatOf(const Digits& digits) {
    std::string format = digits.whole.empty() ? "#" : "0";
    if (!digits.decimals.empty()) format += "." + std::string(digits.decimals.size(), '0');
    if (digits.exponent) format += "E-" + std::string(digits.exponentDigits.size(), '0');
    return format;
}

}  // namespace

bool NumberText(std::string_view text) {
    Digits digits;
    if (!Parse(text, digits)) return false;
    if (digits.whole.size() > 1 && digits.whole[0] == '0') return false;
    std::string all = std::string(digits.whole) + std::string(digits.decimals);
    all.erase(0, std::min(all.find_first_not_of('0'), all.size()));
    constexpr std::size_t MostDigits = 15;
    // A spreadsheet ends at 1E308; its smallest number is 1E-307.
    constexpr int HighestExponent = 290;
    const int exponent = digits.exponent ? std::stoi(std::string(digits.exponentDigits)) : 0;
    return all.size() <= MostDigits && exponent <= HighestExponent;
}

/// Packs what is written to the end of a text.
class Workbook::Packer {
 public:
    explicit Packer(std::string& out) : out_(out) {
        // Fast: a table packs to a tenth either way.
        constexpr int Level = 3, RawDeflate = -15, Memory = 8;
        if (deflateInit2(&stream_, Level, Z_DEFLATED, RawDeflate, Memory, Z_DEFAULT_STRATEGY) != Z_OK)
            throw RuntimeError(ErrorNumber::OutOfMemory);
    }
    ~Packer() { deflateEnd(&stream_); }
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    void Write(std::string_view content) {
        waiting_ += content;
        constexpr std::size_t Enough = 1 << 16;
        if (waiting_.size() >= Enough) Run(Z_NO_FLUSH);
    }
    void End() { Run(Z_FINISH); }

    std::uint32_t crc = 0, size = 0;

 private:
    void Run(int flush) {
        auto* bytes = reinterpret_cast<Bytef*>(waiting_.data());
        const auto count = static_cast<uInt>(waiting_.size());
        crc = static_cast<std::uint32_t>(crc32(crc, bytes, count));
        // The archive's numbers have 32 bits.
        constexpr std::size_t Largest = std::numeric_limits<std::uint32_t>::max() - (1u << 20);
        if (std::size_t{size} + count > Largest || out_.size() + count > Largest)
            throw RuntimeError(ErrorNumber::OutOfMemory);
        size += count;
        stream_.next_in = bytes;
        stream_.avail_in = count;
        std::array<Bytef, 1 << 16> packed;
        do {
            stream_.next_out = packed.data();
            stream_.avail_out = static_cast<uInt>(packed.size());
            if (deflate(&stream_, flush) == Z_STREAM_ERROR) throw RuntimeError(ErrorNumber::OutOfMemory);
            out_.append(reinterpret_cast<const char*>(packed.data()), packed.size() - stream_.avail_out);
        } while (stream_.avail_out == 0);
        waiting_.clear();
    }

    std::string& out_;
    std::string waiting_;
    z_stream stream_{};
};

Workbook::Workbook() = default;
Workbook::~Workbook() = default;

// --- sheets ------------------------------------------------------------------------------------------------------

void Workbook::BeginSheet(const std::string& name, const std::vector<int>& widths, int fixedRows) {
    EndSheet();
    sheets_.push_back(name);
    const std::string number = std::to_string(sheets_.size());
    BeginPart("xl/worksheets/sheet" + number + ".xml");
    Write(std::string(XmlHead) + "<worksheet xmlns=\"" + Main + "\"><sheetViews><sheetView workbookViewId=\"0\">");
    if (fixedRows > 0) {
        const std::string rows = std::to_string(fixedRows);
        Write("<pane ySplit=\"" + rows + "\" topLeftCell=\"A" + std::to_string(fixedRows + 1) +
              "\" activePane=\"bottomLeft\" state=\"frozen\"/>");
    }
    Write("</sheetView></sheetViews><cols>");
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const std::string col = std::to_string(i + 1);
        Write(Put({"<col min=\"", col, "\" max=\"", col, "\" width=\"", std::to_string(widths[i]),
                   "\" customWidth=\"1\"/>"}));
    }
    Write("</cols><sheetData>");
    row_ = 0;
}

void Workbook::BeginRow() {
    if (row_ > 0) Write("</row>");
    ++row_;
    col_ = 0;
    Write("<row r=\"" + std::to_string(row_) + "\">");
}

void Workbook::Cell(std::string_view attributes, std::string_view content) {
    std::string cell = "<c r=\"" + ColumnName(col_) + std::to_string(row_) + "\"";
    cell.append(attributes).append(">").append(content).append("</c>");
    Write(cell);
}

void Workbook::Text(std::string_view text, bool bold) {
    const std::string_view shown = Fitting(text);
    if (shown.size() < text.size()) ++cutTexts_;
    if (!text.empty())
        Cell(" t=\"inlineStr\" s=\"" + std::to_string(bold ? BoldStyle : TextStyle) + "\"",
             "<is><t xml:space=\"preserve\">" + Escaped(shown) + "</t></is>");
    ++col_;
}

void Workbook::Number(std::string_view text) {
    Digits digits;
    if (Parse(text, digits)) {
        std::string value(Trimmed(text));
        if (digits.whole.empty()) value.insert(digits.negative ? 1 : 0, 1, '0');
        Cell(" s=\"" + std::to_string(StyleOf(FormatOf(digits))) + "\"", "<v>" + value + "</v>");
    }
    ++col_;
}

void Workbook::EndSheet() {
    if (packer_ == nullptr) return;
    if (row_ > 0) Write("</row>");
    // Names made of digits are meant as texts; nobody is to be warned of them.
    Write("</sheetData><ignoredErrors><ignoredError sqref=\"A1:XFD" + std::to_string(RowsASheet) +
          "\" numberStoredAsText=\"1\"/></ignoredErrors></worksheet>");
    EndPart();
}

int Workbook::StyleOf(const std::string& format) {
    return FirstFormat + formats_.try_emplace(format, static_cast<int>(formats_.size())).first->second;
}

std::string Workbook::StyleSheet() const {
    constexpr int FirstOwnFormat = 164, AsTextFormat = 49;
    std::vector<std::string> formats(formats_.size());
    for (const auto& [format, place] : formats_)
        formats[static_cast<std::size_t>(place)] = format;
    std::string list, cells;
    for (std::size_t i = 0; i < formats.size(); ++i) {
        const std::string id = std::to_string(FirstOwnFormat + i);
        list += "<numFmt numFmtId=\"" + id + "\" formatCode=\"" + formats[i] + "\"/>";
        cells += "<xf numFmtId=\"" + id + "\" fontId=\"0\" fillId=\"0\" borderId=\"0\" applyNumberFormat=\"1\"/>";
    }
    if (!list.empty()) list = "<numFmts count=\"" + std::to_string(formats.size()) + "\">" + list + "</numFmts>";
    const std::string plain = " fillId=\"0\" borderId=\"0\"";
    return std::string(XmlHead) + "<styleSheet xmlns=\"" + Main + "\">" + list +
           "<fonts count=\"2\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font>"
           "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts>"
           "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
           "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
           "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
           "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\"" +
           plain + "/></cellStyleXfs><cellXfs count=\"" + std::to_string(FirstFormat + formats.size()) +
           "\"><xf numFmtId=\"0\" fontId=\"0\"" + plain + "/><xf numFmtId=\"0\" fontId=\"1\"" + plain +
           " applyFont=\"1\"/><xf numFmtId=\"" + std::to_string(AsTextFormat) + "\" fontId=\"0\"" + plain +
           " applyNumberFormat=\"1\"/>" + cells +
           "</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
           "</styleSheet>";
}

// --- the archive -------------------------------------------------------------------------------------------------

void Workbook::Write(std::string_view content) {
    packer_->Write(content);
}

namespace {

constexpr int Version = 20, Packed = 8, FirstDay = 0x21;  // 1 January 1980, so that equal tables give equal bytes

void EntryHead(std::string& out, std::uint32_t crc, std::uint32_t packed, std::uint32_t size, std::size_t name) {
    Little(out, Version, 2);
    Little(out, 0x800, 2);  // names in UTF-8
    Little(out, Packed, 2);
    Little(out, 0, 2);
    Little(out, FirstDay, 2);
    Little(out, crc, 4);
    Little(out, packed, 4);
    Little(out, size, 4);
    Little(out, static_cast<std::uint32_t>(name), 2);
    Little(out, 0, 2);
}

}  // namespace

void Workbook::BeginPart(const std::string& name) {
    Part part;
    part.name = name;
    part.offset = static_cast<std::uint32_t>(bytes_.size());
    parts_.push_back(part);
    Little(bytes_, 0x04034b50, 4);
    EntryHead(bytes_, 0, 0, 0, name.size());
    bytes_ += name;
    packer_ = std::make_unique<Packer>(bytes_);
}

void Workbook::EndPart() {
    packer_->End();
    Part& part = parts_.back();
    constexpr std::size_t Signature = 4, HeadBytes = 30;
    part.crc = packer_->crc;
    part.size = packer_->size;
    part.packed = static_cast<std::uint32_t>(bytes_.size() - part.offset - HeadBytes - part.name.size());
    std::string head;
    EntryHead(head, part.crc, part.packed, part.size, part.name.size());
    bytes_.replace(part.offset + Signature, head.size(), head);
    packer_.reset();
}

void Workbook::AddPart(const std::string& name, std::string_view content) {
    BeginPart(name);
    Write(content);
    EndPart();
}

std::string Workbook::Bytes() {
    EndSheet();
    std::string types, list, links;
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const std::string n = std::to_string(i + 1);
        types += "<Override PartName=\"/xl/worksheets/sheet" + n + ".xml\" ContentType=\"" + Type + "worksheet+xml\"/>";
        list += Put({"<sheet name=\"", Escaped(sheets_[i]), "\" sheetId=\"", n, "\" r:id=\"rId", n, "\"/>"});
        links += Put({"<Relationship Id=\"rId", n, "\" Type=\"", Office, "/worksheet\" Target=\"worksheets/sheet", n,
                      ".xml\"/>"});
    }
    const std::string relations = std::string(XmlHead) + "<Relationships xmlns=\"" + Package + "relationships\">";
    AddPart("[Content_Types].xml",
            std::string(XmlHead) + "<Types xmlns=\"" + Package +
                "content-types\"><Default Extension=\"rels\" "
                "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                "<Default Extension=\"xml\" ContentType=\"application/xml\"/><Override PartName=\"/xl/workbook.xml\" "
                "ContentType=\"" +
                Type + "sheet.main+xml\"/><Override PartName=\"/xl/styles.xml\" ContentType=\"" + Type +
                "styles+xml\"/>" + types + "</Types>");
    AddPart("_rels/.rels", relations + "<Relationship Id=\"rId1\" Type=\"" + Office +
                               "/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>");
    AddPart("xl/workbook.xml", std::string(XmlHead) + "<workbook xmlns=\"" + Main + "\" xmlns:r=\"" + Office +
                                   "\"><sheets>" + list + "</sheets></workbook>");
    AddPart("xl/_rels/workbook.xml.rels", relations + links + "<Relationship Id=\"rIdS\" Type=\"" + Office +
                                              "/styles\" Target=\"styles.xml\"/></Relationships>");
    AddPart("xl/styles.xml", StyleSheet());

    const auto start = static_cast<std::uint32_t>(bytes_.size());
    for (const Part& part : parts_) {
        Little(bytes_, 0x02014b50, 4);
        Little(bytes_, Version, 2);
        EntryHead(bytes_, part.crc, part.packed, part.size, part.name.size());
        Little(bytes_, 0, 2);  // comment
        Little(bytes_, 0, 2);  // disk
        Little(bytes_, 0, 2);  // attributes
        Little(bytes_, 0, 4);
        Little(bytes_, part.offset, 4);
        bytes_ += part.name;
    }
    const auto directory = static_cast<std::uint32_t>(bytes_.size()) - start;
    const auto count = static_cast<std::uint32_t>(parts_.size());
    Little(bytes_, 0x06054b50, 4);
    Little(bytes_, 0, 4);
    Little(bytes_, count, 2);
    Little(bytes_, count, 2);
    Little(bytes_, directory, 4);
    Little(bytes_, start, 4);
    Little(bytes_, 0, 2);
    return std::move(bytes_);
}

}  // namespace kelvo
