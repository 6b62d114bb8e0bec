// The host's dockable palette set, seen from the rest of the plug-in without MFC types. It is
// implemented over CAdUiPaletteSet/CAdUiPalette in palette_set_mfc.cpp: one palette set
// named "veltor" holding one palette per module palette, whose content is the plain Win32
// child window of palette_windows.h.
#pragma once

namespace veltor::od {
class Host;
class Palette;
}  // namespace veltor::od

namespace veltor::arx {

// Shows `palette` in the palette set (creating the set and the palette on first use) and makes
// it the active one; false when the host could not create it or no window shows such a
// palette. `host` runs what the palettes' gestures ask for and must outlive the set.
bool ShowInPaletteSet(od::Palette& palette, od::Host& host);

// Hides `palette`'s palette (the set stays while another palette shows); nothing when it is
// not shown.
void HideInPaletteSet(od::Palette& palette);

// Saves the set's docking and position and destroys it (module unload).
void ClosePaletteSet();

}  // namespace veltor::arx
