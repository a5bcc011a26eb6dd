#include "ph/PutAsideMenu.h"

#include <QMenu>

#include "core/HardwareSettings.h"
#include "core/Paths.h"
#include "core/StatusMessages.h"
#include "kit/AppContext.h"
#include "kit/Screen.h"
#include "ph/RecordingJournal.h"

namespace kelvo {

void AddPutAsideMenu(QMenu* file, AppContext& context, Screen* screen) {
    auto* menu = file->addMenu(QStringLiteral("Recordings Put &Aside"));
    Named(menu->menuAction(), "mnuAside");
    const auto bringBack = [&context, screen](const KeptRecording& kept) {
        if (!BringBack(context.state, kept, context.prompts, context.files)) return;
        context.state.Get<StatusMessages>().StatusMessage = "The recording has been brought back and saved.";
        screen->TakeStatusMessage();
    };
    // Looked for when the menu comes down: another program may have put one aside.
    QObject::connect(menu, &QMenu::aboutToShow, menu, [&context, menu, bringBack] {
        menu->clear();
        int index = 0;
        for (const KeptRecording& kept : RecordingsPutAside(context.state.Get<Paths>().JournalPath)) {
            const std::string caption = PutAsideCaption(kept, context.state.Get<HardwareSettings>().DateFormat);
            auto* item = Named(menu->addAction(ToQt(caption)), "mnuAsideItem", index++);
            QObject::connect(item, &QAction::triggered, menu, [bringBack, kept] { bringBack(kept); });
        }
        if (index == 0) menu->addAction(QStringLiteral("None of the last 30 days"))->setEnabled(false);
    });
}

}  // namespace kelvo
