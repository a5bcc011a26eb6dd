#pragma once

#include <QColor>

class QApplication;

namespace kelvo {

/// The sixteen colours by number, 0 black to 15 white.
QColor ColourOf(int number);
/// Black or white, whichever reads on that colour.
QColor TextOn(int number);

/// Fusion style with the desktop's own font and palette, and the marks that every screen shares: the ring of the
/// box in hand, white entry boxes, flat computed ones, the lead yellow, the status bar.
void ApplyTheme(QApplication& app);

}  // namespace kelvo
