#include "link/LinkStatusLabel.h"

#include <array>

namespace kelvo {
namespace {

/// Colour and shape of the dot by `LinkStatus::Kind`: the shape tells what the colour does.
struct Dot {
    const char* colour;
    const char* shape;
};
constexpr std::array<Dot, 6> Dots = {
    {{"#808080", "○"}, {"#808080", "◔"}, {"#1a8f3c", "●"}, {"#b07a00", "◐"}, {"#e04848", "◌"}, {"#e04848", "✕"}}};

constexpr int FollowMs = 500;

}  // namespace

LinkStatusLabel::LinkStatusLabel(const Link* link, QWidget* parent) : QLabel(parent), link_(link) {
    setObjectName(QStringLiteral("linkLight"));
    setTextFormat(Qt::RichText);
    if (link == nullptr) hide();
    timer_.setInterval(FollowMs);
    connect(&timer_, &QTimer::timeout, this, &LinkStatusLabel::Follow);
    Follow();
}

void LinkStatusLabel::Follow() {
    if (link_ == nullptr) return;
    const LinkStatus light = link_->Status();
    const QString words = QString::fromStdString(LinkStatusText(light));
    // Nothing is painted anew while nothing has changed.
    if (words == accessibleName()) return;
    const Dot& dot = Dots.at(static_cast<std::size_t>(light.kind));
    setText(QStringLiteral("<span style='color:%1'>%2</span>&nbsp;%3")
                .arg(QString::fromLatin1(dot.colour), QString::fromUtf8(dot.shape), words.toHtmlEscaped()));
    setAccessibleName(words);
}

void LinkStatusLabel::showEvent(QShowEvent* event) {
    QLabel::showEvent(event);
    Follow();
    timer_.start();
}

void LinkStatusLabel::hideEvent(QHideEvent* event) {
    QLabel::hideEvent(event);
    timer_.stop();
}

}  // namespace kelvo
