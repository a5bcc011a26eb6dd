#pragma once

#include <QColor>
#include <QString>

class QApplication;

namespace kelvo {

/// The sixteen colours by number, 0 black to 15 white.
QColor ColourOf(int number);
/// Style of a message that lies over or under a graph; `padding` in pixels.
QString MessageStyle(int padding);
/// Style of a hint in light red, which has the contrast of a text on black alone.
QString HintStyle();
/// How far two colours stand apart, 1 to 21, by the formula of WCAG 2.1: black on white is 21.
double Contrast(const QColor& one, const QColor& other);
/// Black or white, whichever reads on that colour.
QColor TextOn(int number);

/// Fusion style with the desktop's own font and palette, and the marks that every screen shares: the ring of the
/// box in hand, white entry boxes, flat computed ones, the next field yellow, the status bar. Labels show their texts
/// as they are.
void ApplyTheme(QApplication& app);
/// The two parts of it: what paints any widget, and the sheet, which costs each widget a search through its rules.
void ApplyStyle(QApplication& app);
void ApplySheet(QApplication& app);
/// What the sheet says of buttons, for a button that is there before it.
QString ButtonStyle();

}  // namespace kelvo
