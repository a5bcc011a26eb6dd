#include "kit/Theme.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>
#include <array>
#include <cmath>

#include "core/DisplayList.h"
#include "kit/ShownText.h"

namespace kelvo {
namespace {

constexpr std::array<QRgb, 16> Sixteen = {0xFF000000, 0xFF000080, 0xFF008000, 0xFF008080, 0xFF800000, 0xFF800080,
                                          0xFF808000, 0xFFC0C0C0, 0xFF808080, 0xFF0000FF, 0xFF00FF00, 0xFF00FFFF,
                                          0xFFFF0000, 0xFFFF00FF, 0xFFFFFF00, 0xFFFFFFFF};

constexpr QRgb EdgeColour = 0xFF747D8A;

// Letters stand at least 4.5 to 1 on their ground and marks 3 to 1, on a light and on a dark desktop: a colour of its
// own brings its ground, and rings and edges lie between the two grounds. What colour says is said by a shape too: the
// next field has a bar at its left, a value that is not live a plate.
const char* const Buttons = R"(
QPushButton { padding: 5px 16px; min-width: 64px; }
QPushButton:focus { border: 2px solid #2f80d8; border-radius: 4px; background: palette(button); }
)";
const char* const Sheet = R"(
QLineEdit { background: #ffffff; color: #000000; border: 1px solid #747d8a; border-radius: 3px; padding: 3px 6px;
            selection-background-color: #2c6fae; selection-color: #ffffff; }
QLineEdit:disabled { background: palette(window); color: palette(window-text); border-color: palette(midlight); }
QLineEdit[readOnly="true"] { background: palette(window); color: palette(window-text);
                             border: 1px solid palette(midlight); }
QLineEdit:focus { border: 2px solid #2f80d8; padding: 2px 5px; }
QLineEdit[stale="true"], QLabel[stale="true"] { background: #e4e7eb; color: #4a515a; }
QLineEdit[nextField="true"] { background: #ffff80; color: #000000; border-left: 6px solid #9a7b00; padding-left: 1px; }
QPushButton[route="true"] { font-size: 13pt; padding: 10px 18px; text-align: left; }
QCheckBox, QRadioButton { border: 2px solid transparent; border-radius: 3px; padding: 1px 4px; }
QCheckBox:focus, QRadioButton:focus { border-color: #2f80d8; }
QComboBox:focus { border: 2px solid #2f80d8; border-radius: 3px; padding-left: 4px; }
QGroupBox { font-weight: 600; }
QLabel[footer="true"] { border-top: 1px solid palette(midlight); }
QLabel[footer="true"][filled="true"] { background: #fff3c4; color: #3a2c00; border-top: 1px solid #9a7b00; }
QLabel[heading="true"] { font-size: 20pt; font-weight: 600; }
QLabel[quiet="true"] { color: palette(window-text); }
QLabel[live="true"] { font-size: 30pt; font-weight: 600; }
)";

/// Fusion, but a tick that is not set is seen on a dark desktop too: its edge is drawn over the style's own, which is
/// darker than any ground.
class EdgedTicks : public QProxyStyle {
 public:
    EdgedTicks() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
    using QProxyStyle::polish;
    /// A list that waits for its choice says so in letters that are quieter than others, not too weak to be read.
    void polish(QPalette& palette) override {
        QProxyStyle::polish(palette);
        QColor quiet = palette.color(QPalette::Text);
        quiet.setAlphaF(0.75);
        palette.setColor(QPalette::PlaceholderText, quiet);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool round = element == PE_IndicatorRadioButton;
        if ((!round && element != PE_IndicatorCheckBox) || !option->state.testFlag(State_Enabled)) return;
        const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing, round);
        painter->setPen(QPen(QColor(EdgeColour), round ? 1.5 : 1));
        painter->setBrush(Qt::NoBrush);
        round ? painter->drawEllipse(edge) : painter->drawRect(edge);
        painter->restore();
    }
};

}  // namespace

QColor ColourOf(int number) {
    return QColor::fromRgb(Sixteen[static_cast<std::size_t>(number >= 0 && number < 16 ? number : 0)]);
}

QString MessageStyle(int padding) {
    return QStringLiteral(
               "background: #eef4fb; color: #10263d; border: 1px solid #55779b; border-radius: 6px; padding: %1px;")
        .arg(padding);
}

QString HintStyle() {
    return QStringLiteral("background: #000000; color: %1; font-weight: 600; border-radius: 3px; padding: 4px 8px;")
        .arg(ColourOf(colour::LightRed).name());
}

double Contrast(const QColor& one, const QColor& other) {
    const auto light = [](const QColor& colour) {
        const auto part = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF()) + 0.05;
    };
    const auto [low, high] = std::minmax({light(one), light(other)});
    return high / low;
}

QColor TextOn(int number) {
    const QColor ground = ColourOf(number);
    return Contrast(Qt::black, ground) > Contrast(Qt::white, ground) ? Qt::black : Qt::white;
}

QString ButtonStyle() {
    return QString::fromLatin1(Buttons);
}

void ApplyStyle(QApplication& app) {
    QApplication::setStyle(new EdgedTicks);
    KeepLabelsPlainAndSpoken(app);
}

void ApplySheet(QApplication& app) {
    app.setStyleSheet(ButtonStyle() + QString::fromLatin1(Sheet));
}

void ApplyTheme(QApplication& app) {
    ApplyStyle(app);
    ApplySheet(app);
}

}  // namespace kelvo
