#pragma once

#include "kit/AppContext.h"

namespace kelvo {

/// From now on the dialog `frmPortSettings` is shown, hidden and unloaded as the link asks for it. Needs
/// `context.link`; the context outlives the link's last change.
void FollowPortDialog(AppContext& context);

/// Brings the dialog up in front of all others, loading it on first use, and returns when it has been hidden.
void ShowPortDialogModal(AppContext& context);

/// Starts the link for points that are to be read. When the port cannot be used, its dialog stands in front until the
/// analyst has repaired it or gone on: behind the point dialog nobody could reach it.
void StartLinkForEntry(AppContext& context);

}  // namespace kelvo
