// The host contract (tests/support/host_contract.h) for the embedded host, and for the
// fault-injecting wrapper with no fault set (which must pass every call through unchanged).
#include <memory>
#include <string>

#include "../support/faulty_host.h"
#include "../support/host_contract.h"
#include "drawing/model/document.h"
#include "drawing/session/session.h"

namespace veltor::testing {
namespace {

// The embedded host with one empty drawing (R2010) open.
struct EmbeddedHost : HostUnderTest {
  EmbeddedHost() : session([](std::string_view) {}) {
    session.AddDocument(model::Document::NewBlank("AC1024"), "contract.dxf");
  }
  od::Host& host() override { return session; }
  session::Session session;
};

struct PassThroughHost : EmbeddedHost {
  PassThroughHost() : faulty(session) {}
  od::Host& host() override { return faulty; }
  FaultyHost faulty;
};

INSTANTIATE_TEST_SUITE_P(
    Hosts, HostContract,
    ::testing::Values(HostMaker{"Embedded", [] { return std::unique_ptr<HostUnderTest>(new EmbeddedHost); }},
                      HostMaker{"FaultWrapperWithoutFaults",
                                [] { return std::unique_ptr<HostUnderTest>(new PassThroughHost); }}),
    [](const ::testing::TestParamInfo<HostMaker>& maker) { return std::string(maker.param.name); });

}  // namespace
}  // namespace veltor::testing
