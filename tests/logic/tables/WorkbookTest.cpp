#include "tables/Workbook.h"

#include "tables/WorkbookParts.h"

namespace kelvo::test {
namespace {

TEST(Workbook, CellsSheetsAndStyles) {
    Workbook book;
    book.BeginSheet("A & B", {8, 20}, 1);
    book.BeginRow();
    book.Text("Head", true);
    book.BeginRow();
    book.Text("<a> & \"b\" _x000D_ _x00G_ \r\x1F\n\t_x000d_");
    for (const char* number : {" 12.10", "-.5", "1.65E-4", "12.11"})
        book.Number(number);
    book.Text("");
    book.Number("none");
    book.Text("12.10");
    book.BeginSheet("Two", {10}, 0);
    book.BeginRow();
    for (int col = 0; col < 53; ++col)
        book.Text(col == 25 || col == 26 || col == 52 ? "x" : "");
    const auto parts = Parts(book.Bytes());
    ASSERT_EQ(parts.size(), 7u);
    const std::string& sheet = parts.at("xl/worksheets/sheet1.xml");
    const auto text = [](const char* cell, const char* style, const std::string& content) {
        return std::string("<c r=\"") + cell + "\" t=\"inlineStr\" s=\"" + style + "\"><is><t xml:space=\"preserve\">" +
               content + "</t></is></c>";
    };
    EXPECT_EQ(
        Between(sheet, "<sheetData>", "</sheetData>"),
        "<row r=\"1\">" + text("A1", "1", "Head") + "</row><row r=\"2\">" +
            text("A2", "2", "&lt;a&gt; &amp; &quot;b&quot; _x005F_x000D_ _x00G_ _x000D__x001F_\n\t_x005F_x000d_") +
            "<c r=\"B2\" s=\"3\"><v>12.10</v></c><c r=\"C2\" s=\"4\"><v>-0.5</v></c>"
            "<c r=\"D2\" s=\"5\"><v>1.65E-4</v></c><c r=\"E2\" s=\"3\"><v>12.11</v></c>" +
            text("H2", "2", "12.10") + "</row>");
    EXPECT_NE(sheet.find("<pane ySplit=\"1\" topLeftCell=\"A2\""), std::string::npos);
    EXPECT_EQ(Between(sheet, "<cols>", "</cols>"),
              "<col min=\"1\" max=\"1\" width=\"8\" customWidth=\"1\"/>"
              "<col min=\"2\" max=\"2\" width=\"20\" customWidth=\"1\"/>");
    const std::string& second = parts.at("xl/worksheets/sheet2.xml");
    EXPECT_EQ(second.find("<pane"), std::string::npos);
    EXPECT_EQ(Between(second, "<sheetData>", "</sheetData>"),
              "<row r=\"1\">" + text("Z1", "2", "x") + text("AA1", "2", "x") + text("BA1", "2", "x") + "</row>");
    EXPECT_EQ(
        Between(parts.at("xl/workbook.xml"), "<sheets>", "</sheets>"),
        "<sheet name=\"A &amp; B\" sheetId=\"1\" r:id=\"rId1\"/><sheet name=\"Two\" sheetId=\"2\" r:id=\"rId2\"/>");
    const std::string& styles = parts.at("xl/styles.xml");
    EXPECT_EQ(Between(styles, "<numFmts count=\"3\">", "</numFmts>"),
              "<numFmt numFmtId=\"164\" formatCode=\"0.00\"/><numFmt numFmtId=\"165\" formatCode=\"#.0\"/>"
              "<numFmt numFmtId=\"166\" formatCode=\"0.00E-0\"/>");
    const std::string cells = Between(styles, "<cellXfs count=\"6\">", "</cellXfs>");
    EXPECT_LT(cells.find("numFmtId=\"49\""), cells.find("numFmtId=\"164\"")) << "texts are texts, then the formats";
    // Every part that is named is there, and the other way round.
    for (const char* link : {"worksheets/sheet1.xml", "worksheets/sheet2.xml", "styles.xml"}) {
        EXPECT_NE(parts.at("xl/_rels/workbook.xml.rels").find(std::string("Target=\"") + link), std::string::npos);
        EXPECT_NE(parts.at("[Content_Types].xml").find(std::string("PartName=\"/xl/") + link), std::string::npos);
    }
    EXPECT_NE(parts.at("_rels/.rels").find("Target=\"xl/workbook.xml\""), std::string::npos);
}

TEST(Workbook, TextsLongerThanACellAreCutBetweenCharactersAndCounted) {
    Workbook book;
    book.BeginSheet("S", {}, 0);
    const std::pair<std::string, std::size_t> rows[] = {
        {std::string(32767, 'x'), 32767},
        {std::string(32768, 'x'), 32767},
        {std::string(32766, 'x') + "µµ", 32768},
        {std::string(32766, 'x') + "\xF0\x9F\xA7\xAA", 32766},  // takes two places of the spreadsheet's
    };
    for (const auto& row : rows) {
        book.BeginRow();
        book.Text(row.first);
    }
    EXPECT_EQ(book.CutTexts(), 3);
    std::string sheet = Parts(book.Bytes()).at("xl/worksheets/sheet1.xml");
    for (const auto& row : rows) {
        EXPECT_EQ(Between(sheet, "preserve\">", "</t>"), row.first.substr(0, row.second));
        sheet.erase(0, sheet.find("</row>") + 6);
    }
}

}  // namespace
}  // namespace kelvo::test
