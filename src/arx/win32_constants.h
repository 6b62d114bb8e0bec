// The few numeric constants of the Win32 API that the portable part of the plug-in (the
// dialog template builder and its layout) needs, so that it compiles and is tested without
// windows.h. win32_constants_check.cpp, compiled only by the Windows check and the Windows
// build, asserts that each equals windows.h's value.
#pragma once

#include <cstdint>

namespace veltor::arx::win32 {

// Window styles.
inline constexpr uint32_t kWsPopup = 0x80000000u;
inline constexpr uint32_t kWsChild = 0x40000000u;
inline constexpr uint32_t kWsVisible = 0x10000000u;
inline constexpr uint32_t kWsDisabled = 0x08000000u;
inline constexpr uint32_t kWsCaption = 0x00C00000u;
inline constexpr uint32_t kWsBorder = 0x00800000u;
inline constexpr uint32_t kWsVScroll = 0x00200000u;
inline constexpr uint32_t kWsHScroll = 0x00100000u;
inline constexpr uint32_t kWsSysMenu = 0x00080000u;
inline constexpr uint32_t kWsGroup = 0x00020000u;
inline constexpr uint32_t kWsTabStop = 0x00010000u;
inline constexpr uint32_t kWsExClientEdge = 0x00000200u;

// Dialog styles.
inline constexpr uint32_t kDsSetFont = 0x40u;
inline constexpr uint32_t kDsModalFrame = 0x80u;
inline constexpr uint32_t kDsFixedSys = 0x08u;
inline constexpr uint32_t kDsShellFont = kDsSetFont | kDsFixedSys;
inline constexpr uint32_t kDsCenter = 0x0800u;

// Static, edit, button, combo box, list box and list view styles.
inline constexpr uint32_t kSsLeft = 0x0u;
inline constexpr uint32_t kSsNoPrefix = 0x80u;
inline constexpr uint32_t kEsMultiline = 0x4u;
inline constexpr uint32_t kEsAutoVScroll = 0x40u;
inline constexpr uint32_t kEsAutoHScroll = 0x80u;
inline constexpr uint32_t kEsReadOnly = 0x800u;
inline constexpr uint32_t kBsPushButton = 0x0u;
inline constexpr uint32_t kBsDefPushButton = 0x1u;
inline constexpr uint32_t kBsAutoCheckBox = 0x3u;
inline constexpr uint32_t kCbsDropDownList = 0x3u;
inline constexpr uint32_t kLbsNotify = 0x1u;
inline constexpr uint32_t kLbsMultipleSel = 0x8u;
inline constexpr uint32_t kLbsNoIntegralHeight = 0x100u;
inline constexpr uint32_t kLbsNoSel = 0x4000u;
inline constexpr uint32_t kLvsReport = 0x1u;
inline constexpr uint32_t kLvsSingleSel = 0x4u;
inline constexpr uint32_t kLvsShowSelAlways = 0x8u;
inline constexpr uint32_t kLvsOwnerData = 0x1000u;

// The predefined window classes a dialog template names by ordinal (0xFFFF, atom).
inline constexpr uint16_t kAtomButton = 0x0080;
inline constexpr uint16_t kAtomEdit = 0x0081;
inline constexpr uint16_t kAtomStatic = 0x0082;
inline constexpr uint16_t kAtomListBox = 0x0083;
inline constexpr uint16_t kAtomComboBox = 0x0085;
// The list view's class (WC_LISTVIEWW), which has no atom.
inline constexpr char16_t kListViewClass[] = u"SysListView32";

// The dialog ids of the OK and Cancel buttons (IDOK, IDCANCEL).
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;

}  // namespace veltor::arx::win32
