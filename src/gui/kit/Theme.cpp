#include "kit/Theme.h"

#include <QApplication>
#include <QStyleFactory>
#include <array>

namespace kelvo {
namespace {

constexpr std::array<QRgb, 16> Sixteen = {0xFF000000, 0xFF000080, 0xFF008000, 0xFF008080, 0xFF800000, 0xFF800080,
                                          0xFF808000, 0xFFC0C0C0, 0xFF808080, 0xFF0000FF, 0xFF00FF00, 0xFF00FFFF,
                                          0xFFFF0000, 0xFFFF00FF, 0xFFFFFF00, 0xFFFFFFFF};

const char* const Sheet = R"(
QLineEdit { background: #ffffff; color: #000000; border: 1px solid #8a93a0; border-radius: 3px; padding: 3px 6px;
            selection-background-color: #2c6fae; selection-color: #ffffff; }
QLineEdit:focus { border: 2px solid #1f6fc0; padding: 2px 5px; }
QLineEdit:disabled { background: palette(window); color: palette(window-text); border-color: palette(midlight); }
QLineEdit[readOnly="true"] { background: palette(window); color: palette(window-text);
                             border: 1px solid palette(midlight); }
QLineEdit[stale="true"], QLabel[stale="true"] { color: #7d8590; }
QLineEdit[nextField="true"] { background: #ffff80; color: #000000; }
QPushButton { padding: 5px 16px; min-width: 64px; }
QPushButton:focus { border: 2px solid #1f6fc0; border-radius: 4px; background: palette(button); }
QPushButton[route="true"] { font-size: 13pt; padding: 10px 18px; text-align: left; }
QCheckBox, QRadioButton { border: 2px solid transparent; border-radius: 3px; padding: 1px 4px; }
QCheckBox:focus, QRadioButton:focus { border-color: #1f6fc0; }
QComboBox:focus { border: 2px solid #1f6fc0; border-radius: 3px; padding-left: 4px; }
QGroupBox { font-weight: 600; }
QLabel[footer="true"] { border-top: 1px solid palette(midlight); }
QLabel[footer="true"][filled="true"] { background: #fff3c4; color: #3a2c00; border-top: 1px solid #d9b84a; }
QLabel[heading="true"] { font-size: 20pt; font-weight: 600; }
QLabel[quiet="true"] { color: palette(window-text); }
QLabel[live="true"] { font-size: 30pt; font-weight: 600; }
)";

}  // namespace

QColor ColourOf(int number) {
    return QColor::fromRgb(Sixteen[static_cast<std::size_t>(number >= 0 && number < 16 ? number : 0)]);
}

QString MessageStyle(int padding) {
    return QStringLiteral(
               "background: #eef4fb; color: #10263d; border: 1px solid #7f9dbd; border-radius: 6px; padding: %1px;")
        .arg(padding);
}

QColor TextOn(int number) {
    const QColor ground = ColourOf(number);
    const double light = 0.299 * ground.red() + 0.587 * ground.green() + 0.114 * ground.blue();
    return light > 140 ? Qt::black : Qt::white;
}

void ApplyTheme(QApplication& app) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    app.setStyleSheet(QString::fromLatin1(Sheet));
}

}  // namespace kelvo
