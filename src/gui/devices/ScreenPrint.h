#pragma once

#include <QByteArray>
#include <QString>

#include "kit/AppContext.h"

class QPaintDevice;
class QTextDocument;
class QWidget;

namespace kelvo {

class Screen;

enum class PrinterState {
    None,      ///< the machine has no printer: prints go into a PDF file that the analyst names
    NotReady,  ///< there is one, and it reports an error
    Ready,
};

/// The default printer of the system, or its first one.
PrinterState SystemPrinter();

/// "Print" of a screen: the printer check, which `NetworkPrinter` leaves out, then the screen's content on one page.
/// Failures are told in Kelvo's words; nothing is written by halves.
/// @param title stands above it, the window's own when empty
void PrintScreen(AppContext& context, Screen& screen, PrinterState printer = SystemPrinter(),
                 const QString& title = {});

/// The same for a screen of live or plotted potentials, under the title "Electrode Potential".
void PrintScreenGraph(AppContext& context, Screen& screen, PrinterState printer = SystemPrinter());

/// "Print" of a text: the same printer check, then as many pages as the text needs.
void PrintText(AppContext& context, Screen& screen, const QTextDocument& text, PrinterState printer = SystemPrinter());

/// Draws the content of a window, without its menu bar, as large as the page allows: as lines and letters, not as a
/// picture of pixels. The title and `stamp` (date and time) stand above. @return false when the device fails.
bool DrawScreen(QWidget& window, const QString& stamp, QPaintDevice& page, const QString& title = {});

/// The same as the bytes of a PDF file, A4 in the orientation that fits; empty on failure.
QByteArray ScreenAsPdf(QWidget& window, const QString& stamp, const QString& title = {});

}  // namespace kelvo
