#pragma once

#include <memory>

#include "Platform/Toolkit/Control.h"
#include "Platform/Toolkit/TableView.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** What both kinds of list screens do as they come and go. Main thread. */

/** Hides the bar on the bottom screen of a stack, unless it is always shown, and shows it on pushed ones;
 * animated. */
void ZRNUpdateNavigationBarForList(ViewController& list, bool alwaysShown);

/** Makes a fresh Now Playing button, as high as the bar, the right item of the list's bar. `action` runs
   while the list lives. */
std::shared_ptr<View> ZRNInstallNowPlayingButton(ViewController& list, Control::Action action);

/** Clears the selection now and, in a swipe back, again when it is not let go. `willWait` runs when there is
   such a wait. */
void ZRNClearSelectionOnAppearance(ViewController& list, const std::shared_ptr<TableView>& table,
                                   bool animated, const Task& willWait);

}  // namespace zornic
