#include "core/DisplayListSvg.h"

#include <algorithm>

#include "text/Number.h"

namespace kelvo {
namespace {

constexpr float TwipsAPixel = 15, TwipsAPoint = 20;

const char* Ink(int colour) {
    static constexpr const char* Colours[] = {"#000000", "#000080", "#008000", "#008080", "#800000", "#800080",
                                              "#808000", "#c0c0c0", "#808080", "#0000ff", "#00ff00", "#00ffff",
                                              "#ff0000", "#ff00ff", "#ffff00", "#ffffff"};
    return Colours[std::clamp(colour, 0, 15)];
}

std::string Escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            default: out += c;
        }
    }
    return out;
}

/// ` name="12.5"`
std::string Attribute(const char* name, float value) {
    return std::string(" ") + name + "=\"" + TrimStr(value) + "\"";
}
std::string Attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + value + "\"";
}

std::string Element(const DisplayItem& item) {
    const std::string ink = Ink(item.colour);
    switch (item.kind) {
        case DisplayItem::Kind::Line:
            return "<line" + Attribute("x1", item.x1) + Attribute("y1", item.y1) + Attribute("x2", item.x2) +
                   Attribute("y2", item.y2) + Attribute("stroke", ink) +
                   Attribute("stroke-width", item.size * TwipsAPixel) + "/>";
        case DisplayItem::Kind::Dot: {
            const float half = item.size / 2;
            const std::string fill = item.hollow ? Attribute("fill", std::string("#ffffff")) +
                                                       Attribute("stroke", ink) + Attribute("stroke-width", TwipsAPixel)
                                                 : Attribute("fill", ink);
            if (item.shape == DisplayItem::Shape::Square)
                return "<rect" + Attribute("x", item.x1 - half) + Attribute("y", item.y1 - half) +
                       Attribute("width", item.size) + Attribute("height", item.size) + fill + "/>";
            return "<circle" + Attribute("cx", item.x1) + Attribute("cy", item.y1) + Attribute("r", half) + fill + "/>";
        }
        case DisplayItem::Kind::Text: {
            // A text is placed by its top; letters stand on their base line.
            constexpr float Ascent = 0.93f;
            const float height = item.size * TwipsAPoint;
            return "<text" + Attribute("x", item.x1) + Attribute("y", item.y1 + height * Ascent) +
                   Attribute("font-size", height) + Attribute("fill", ink) + ">" + Escaped(item.text) + "</text>";
        }
    }
    return {};
}

}  // namespace

std::string DisplayListSvg(const DisplayList& list, float width, float height, const std::string& title) {
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
                      Attribute("width", width / TwipsAPixel) + Attribute("height", height / TwipsAPixel) +
                      Attribute("viewBox", "0 0 " + Format(width, "0") + " " + Format(height, "0")) +
                      Attribute("font-family", std::string("DejaVu Sans, Verdana, sans-serif")) + ">\n<title>" +
                      Escaped(title) + "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    for (const DisplayItem& item : list.Items())
        out += Element(item) + "\n";
    return out + "</svg>\n";
}

}  // namespace kelvo
