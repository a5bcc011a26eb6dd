#pragma once

#include <string>
#include <vector>

namespace kelvo {

/// Numbers of the sixteen colours that drawings use by name.
namespace colour {
constexpr int Black = 0, Red = 4, LightBlue = 9, LightRed = 12, LightMagenta = 13, Yellow = 14, White = 15;
}

/// One thing drawn: a line, a dot or a text. Coordinates are twips of the drawing surface (1440 an inch, 15 a
/// pixel of Kelvo's design), y downwards.
struct DisplayItem {
    enum class Kind { Line, Dot, Text };
    enum class Shape { Round, Square };
    Kind kind = Kind::Line;
    Shape shape = Shape::Round;  ///< of a dot
    bool hollow = false;         ///< a dot of which only the edge is drawn
    float x1 = 0, y1 = 0;        ///< start of a line, centre of a dot, top left corner of a text
    float x2 = 0, y2 = 0;        ///< end of a line
    int colour = colour::Black;
    float size = 1;      ///< line width in pixels, diameter of a dot in twips, font size of a text in points
    std::string text;    ///< UTF-8
    float maxWidth = 0;  ///< a text wider than this many twips is condensed to fit; 0 leaves it
};

/// What graph code draws into: a list of primitives that a view paints at any size and pixel density and the
/// page writer prints. `xShift` is added to every x as it is drawn, for surfaces whose origin lies elsewhere.
class DisplayList {
 public:
    void Clear() { items_.clear(); }
    void Line(float x1, float y1, float x2, float y2, int colour, float width = 1);
    void Dot(float x, float y, int colour, float diameter = 90);
    /// A dot of that shape, filled or hollow.
    void Mark(float x, float y, int colour, DisplayItem::Shape shape, float diameter, bool hollow);
    void Text(float x, float y, std::string text, float points, int colour = colour::Black, float maxWidth = 0);

    const std::vector<DisplayItem>& Items() const { return items_; }
    bool Empty() const { return items_.empty(); }

    float xShift = 0;

 private:
    std::vector<DisplayItem> items_;
};

}  // namespace kelvo
