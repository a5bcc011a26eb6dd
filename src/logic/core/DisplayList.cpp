#include "core/DisplayList.h"

#include <utility>

namespace kelvo {

void DisplayList::Line(float x1, float y1, float x2, float y2, int colour, float width) {
    DisplayItem line;
    line.kind = DisplayItem::Kind::Line;
    line.x1 = x1 + xShift;
    line.y1 = y1;
    line.x2 = x2 + xShift;
    line.y2 = y2;
    line.colour = colour;
    line.size = width;
    items_.push_back(std::move(line));
}

void DisplayList::Dot(float x, float y, int colour, float diameter) {
    DisplayItem dot;
    dot.kind = DisplayItem::Kind::Dot;
    dot.x1 = x + xShift;
    dot.y1 = y;
    dot.colour = colour;
    dot.size = diameter;
    items_.push_back(std::move(dot));
}

void DisplayList::Mark(float x, float y, int colour, DisplayItem::Shape shape, float diameter, bool hollow) {
    Dot(x, y, colour, diameter);
    items_.back().shape = shape;
    items_.back().hollow = hollow;
}

void DisplayList::Text(float x, float y, std::string text, float points, int colour, float maxWidth) {
    DisplayItem label;
    label.kind = DisplayItem::Kind::Text;
    label.x1 = x + xShift;
    label.y1 = y;
    label.colour = colour;
    label.size = points;
    label.text = std::move(text);
    label.maxWidth = maxWidth;
    items_.push_back(std::move(label));
}

}  // namespace kelvo
