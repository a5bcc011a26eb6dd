#include "devices/TablePrint.h"

#include <QGuiApplication>

#include "core/StatusMessages.h"
#include "devices/QtProgress.h"
#include "tables/TablePresenter.h"

namespace kelvo {

void PrintTableOf(AppContext& context, Screen& screen) {
    context.table.Load();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    {
        QtProgress progress(&screen, QObject::tr("Printing the table."));
        context.table.Print(*context.printing, progress);
    }
    QGuiApplication::restoreOverrideCursor();
    if (!context.state.Get<StatusMessages>().StatusMessage.empty()) screen.TakeStatusMessage();
}

}  // namespace kelvo
