// Compiled only for Windows (the Windows build and make check-arx): every constant the
// portable dialog code defines by itself equals the one windows.h defines.
#include <windows.h>
#include <commctrl.h>

#include "arx/win32_constants.h"

namespace veltor::arx::win32 {

static_assert(kWsPopup == WS_POPUP && kWsChild == WS_CHILD && kWsVisible == WS_VISIBLE);
static_assert(kWsDisabled == WS_DISABLED && kWsCaption == WS_CAPTION && kWsBorder == WS_BORDER);
static_assert(kWsVScroll == WS_VSCROLL && kWsHScroll == WS_HSCROLL && kWsSysMenu == WS_SYSMENU);
static_assert(kWsGroup == WS_GROUP && kWsTabStop == WS_TABSTOP);
static_assert(kWsExClientEdge == WS_EX_CLIENTEDGE);
static_assert(kDsSetFont == DS_SETFONT && kDsModalFrame == DS_MODALFRAME);
static_assert(kDsFixedSys == DS_FIXEDSYS && kDsShellFont == DS_SHELLFONT && kDsCenter == DS_CENTER);
static_assert(kSsLeft == SS_LEFT && kSsNoPrefix == SS_NOPREFIX);
static_assert(kEsMultiline == ES_MULTILINE && kEsAutoVScroll == ES_AUTOVSCROLL);
static_assert(kEsAutoHScroll == ES_AUTOHSCROLL && kEsReadOnly == ES_READONLY);
static_assert(kBsPushButton == BS_PUSHBUTTON && kBsDefPushButton == BS_DEFPUSHBUTTON);
static_assert(kBsAutoCheckBox == BS_AUTOCHECKBOX && kCbsDropDownList == CBS_DROPDOWNLIST);
static_assert(kLbsNotify == LBS_NOTIFY && kLbsMultipleSel == LBS_MULTIPLESEL);
static_assert(kLbsNoIntegralHeight == LBS_NOINTEGRALHEIGHT && kLbsNoSel == LBS_NOSEL);
static_assert(kLvsReport == LVS_REPORT && kLvsSingleSel == LVS_SINGLESEL);
static_assert(kLvsShowSelAlways == LVS_SHOWSELALWAYS && kLvsOwnerData == LVS_OWNERDATA);
static_assert(kIdOk == IDOK && kIdCancel == IDCANCEL);
// The class atoms are documented (DLGITEMTEMPLATE) rather than defined by windows.h; the list
// view's class name is.
constexpr bool SameText(const char16_t* a, const wchar_t* b) {
  for (; *a || *b; ++a, ++b)
    if (static_cast<wchar_t>(*a) != *b) return false;
  return true;
}
static_assert(SameText(kListViewClass, WC_LISTVIEWW));

}  // namespace veltor::arx::win32
