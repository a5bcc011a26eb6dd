#include "tables/Sheets.h"

#include <algorithm>

#include "tables/PrintedPage.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr float HeadTop = 0, NumberSize = 12, FactSize = 9;

/// The text, its middle left out where it is wider than that.
std::string Shortened(PageWriter& page, const std::string& text, float width) {
    if (page.TextWidth(text) <= width) return text;
    const int most = static_cast<int>(width / std::max(1.0f, page.TextWidth("0")));
    return Ends(text, std::max(8, most));
}

}  // namespace

Sheets::Sheets(PageWriter& paper, SheetHead head, int total, Progress& progress)
    : paper_(paper), head_(std::move(head)), total_(total), progress_(progress) {
    PrintHead();
}

void Sheets::PrintHead() {
    FontSize(NumberSize);
    const std::string number = "Page " + TrimStr(number_) + " of " + TrimStr(std::max(total_, number_));
    const float room = Width() - TextWidth(number) - TextWidth("00");
    MoveTo(Width() - TextWidth(number), HeadTop);
    Print(number);
    FontSize(FactSize);
    MoveTo(0, HeadTop);
    Print(Shortened(*this, head_.title, room));
    if (!head_.file.empty()) Print(Shortened(*this, head_.file, Width()));
    Print("Printed: " + head_.printed);
    top_ = CurrentY() + LineHeight() / 2;
    MoveTo(0, top_);
}

void Sheets::Breathe() {
    // The count is the shorter half of the work.
    const int done = Counting() ? number_ : total_ + 2 * number_;
    if (!progress_.At(done, Counting() ? 0 : 3 * total_)) throw PrintCancelled{};
}

float Sheets::TextWidth(const std::string& text) const {
    paper_.FontSize(Points());
    return paper_.TextWidth(text);
}

float Sheets::LineHeight() const {
    paper_.FontSize(Points());
    return paper_.LineHeight();
}

void Sheets::Draw(const DisplayList& picture, float width, float height) {
    if (Counting()) return;
    paper_.FontSize(Points());
    paper_.MoveTo(CurrentX(), CurrentY());
    paper_.Draw(picture, width, height);
}

void Sheets::DrawText(float x, float y, const std::string& text) {
    if (Counting()) return;
    paper_.FontSize(Points());
    paper_.MoveTo(x, y);
    paper_.Print(text);
}

void Sheets::NewPage() {
    Breathe();
    if (!Counting()) paper_.NewPage();
    ++number_;
    const float size = Points();
    PrintHead();
    FontSize(size);
}

void Sheets::EndDocument() {
    if (!Counting()) paper_.EndDocument();
}

}  // namespace kelvo
