// The host contract (tests/support/host_contract.h) instantiated with the Windows plug-in's
// host. The Linux check compiles this file for the Windows target against the SDK
// declarations (scripts/check_arx.sh); it runs only inside the CAD host, in a test build
// of the plug-in that opens one empty drawing first and hands its application packet here.
#include <memory>
#include <string>

#include "../support/host_contract.h"
#include "arx/arx_host.h"
#include "arx/win32_ui_host.h"

namespace veltor::testing {

// The application packet of the test build's kInitAppMsg; null outside the host.
void* ArxTestApplicationPacket();

namespace {

struct ArxHostUnderTest : HostUnderTest {
  // Dialogs without an owner window and palettes without gestures: the contract shows none.
  ArxHostUnderTest() : ui(nullptr, nullptr), adapter(ui, ArxTestApplicationPacket()) {}
  od::Host& host() override { return adapter; }
  arx::Win32UiHost ui;
  arx::ArxHost adapter;
};

INSTANTIATE_TEST_SUITE_P(
    ArxHost, HostContract,
    ::testing::Values(HostMaker{"Arx", [] { return std::unique_ptr<HostUnderTest>(new ArxHostUnderTest); }}),
    [](const ::testing::TestParamInfo<HostMaker>& maker) { return std::string(maker.param.name); });

}  // namespace
}  // namespace veltor::testing
