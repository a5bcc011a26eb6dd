#pragma once

class QMenu;

namespace kelvo {

struct AppContext;
class Screen;

/// Adds to a menu the recordings that were declined during the last thirty days; one that is chosen asks for a file and
/// is saved there.
void AddPutAsideMenu(QMenu* file, AppContext& context, Screen* screen);

}  // namespace kelvo
