// The host's dockable palette set over the SDK's MFC classes: one CAdUiPaletteSet ("veltor",
// docking left or right, its size, place and docking saved by the host under its tool id)
// holding one CAdUiPalette per module palette, each filled by the plain Win32 content window
// of palette_window.h. This is the only file of the palettes that sees MFC; the rest of the
// plug-in reaches it through palette_set.h.
//
// Keys: the host's message loop offers every message to the MFC windows above its target
// (PreTranslateMessage); a palette passes those for its content to IsDialogMessage, so Tab
// moves between the content's controls and Esc reaches the content as IDCANCEL.
#include <afxwin.h>
#include <adui.h>
#include <acui.h>
#include <rxmfcapi.h>

#include <map>
#include <string>

#include "arx/palette_set.h"
#include "arx/palette_window.h"
#include "arx/wide_text.h"
#include "od/palette.h"

namespace veltor::arx {

namespace {

// The tool id under which the host saves the set's place: {6F1E3C52-8B0A-4C7D-9E21-5A4B3D2C1F60}.
const CLSID kPaletteSetId = {0x6f1e3c52, 0x8b0a, 0x4c7d, {0x9e, 0x21, 0x5a, 0x4b, 0x3d, 0x2c, 0x1f, 0x60}};

// One module palette in the set; its content window is created with the palette's window.
class ContentPalette : public CAdUiPalette {
 public:
  ContentPalette(od::Palette& palette, od::Host& host) : palette_(palette), host_(host) {}

  HWND content() const { return content_; }

  BOOL PreTranslateMessage(MSG* message) override {
    if (content_ && message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST &&
        ::IsChild(content_, message->hwnd) && ::IsDialogMessageW(content_, message))
      return TRUE;
    return CAdUiPalette::PreTranslateMessage(message);
  }

 protected:
  afx_msg int OnCreate(LPCREATESTRUCT create) {
    if (CAdUiPalette::OnCreate(create) == -1) return -1;
    content_ = CreatePaletteWindow(palette_, host_, m_hWnd);
    return content_ ? 0 : -1;
  }

  afx_msg void OnSize(UINT type, int width, int height) {
    CAdUiPalette::OnSize(type, width, height);
    if (content_) ::MoveWindow(content_, 0, 0, width, height, TRUE);
  }

  DECLARE_MESSAGE_MAP()

 private:
  od::Palette& palette_;
  od::Host& host_;
  HWND content_ = nullptr;
};

BEGIN_MESSAGE_MAP(ContentPalette, CAdUiPalette)
  ON_WM_CREATE()
  ON_WM_SIZE()
END_MESSAGE_MAP()

// The set and its palettes, created on first use; the set (an MFC window) deletes nothing of
// ours, so the palettes are owned here.
struct PaletteSetState {
  CAdUiPaletteSet* set = nullptr;
  std::map<od::Palette*, ContentPalette*> palettes;
};

PaletteSetState& State() {
  static PaletteSetState state;
  return state;
}

CAdUiPaletteSet* TheSet() {
  PaletteSetState& state = State();
  if (state.set) return state.set;
  // The module has no resources of its own, so no resource override is needed here.
  auto* set = new CAdUiPaletteSet();
  set->SetToolID(&kPaletteSetId);
  const CRect place(0, 0, 320, 520);
  if (!set->Create(L"veltor", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, place, acedGetAcadFrame(),
                   PSS_AUTO_ROLLUP | PSS_CLOSE_BUTTON | PSS_PROPERTIES_MENU | PSS_SNAP)) {
    delete set;
    return nullptr;
  }
  set->EnableDocking(CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT);
  // Puts the set where the user left it last time (floating or docked), or docks it.
  set->RestoreControlBar();
  state.set = set;
  return set;
}

}  // namespace

bool ShowInPaletteSet(od::Palette& palette, od::Host& host) {
  CAdUiPaletteSet* set = TheSet();
  if (!set) return false;
  PaletteSetState& state = State();
  ContentPalette*& shown = state.palettes[&palette];
  if (!shown) {
    auto* created = new ContentPalette(palette, host);
    const std::wstring name = Widen(palette.Name());
    if (!created->Create(WS_CHILD | WS_VISIBLE, name.c_str(), set, 0)) {
      delete created;
      state.palettes.erase(&palette);
      return false;
    }
    set->AddPalette(created);
    shown = created;
  }
  set->SetActivePalette(shown);
  acedGetAcadFrame()->ShowControlBar(set, TRUE, FALSE);
  NotifyShown(shown->content());
  return true;
}

void HideInPaletteSet(od::Palette& palette) {
  PaletteSetState& state = State();
  if (!state.set || state.palettes.count(&palette) == 0) return;
  // The set shows one palette at a time, the one asking: hiding it hides the set.
  acedGetAcadFrame()->ShowControlBar(state.set, FALSE, FALSE);
}

void ClosePaletteSet() {
  PaletteSetState& state = State();
  if (!state.set) return;
  // Destroying the set's window (its palettes' windows with it, they are its children) makes
  // the host save its place under the tool id; then the C++ objects go.
  state.set->DestroyWindow();
  for (auto& entry : state.palettes) delete entry.second;
  state.palettes.clear();
  delete state.set;
  state.set = nullptr;
}

}  // namespace veltor::arx
