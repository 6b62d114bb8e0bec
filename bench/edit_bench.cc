// The editing commands on all of model space of a generated drawing, then saving it:
// VELTOR_RM_ALL (answered Yes, Enter at the prompt) and VELTOR_REPLACE (one plain pattern over
// one Character column: Roads NAME, "road" -> "street"). Each iteration loads the drawing
// afresh (not timed), runs the command through RunCommand as the host does (one undo group)
// and saves the drawing to a scratch file in $TMPDIR (default /tmp), removed afterwards.
// The counters split the time between the command and the save, in seconds of wall-clock
// time and of this thread's CPU time (on a shared machine the CPU time is the steadier).
#include <benchmark/benchmark.h>

#include <time.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "answering_ui.h"
#include "bench_data.h"
#include "commands/edit/detach_all.h"
#include "commands/edit/replace_values.h"
#include "drawing/session/session.h"
#include "od/command_context.h"
#include "ui/options_replace.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) {
  return std::chrono::duration<double>(Clock::now() - since).count();
}

double CpuSeconds() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

// Answers the message box with Yes and the replace dialog with Roads, NAME, "road" -> "street".
veltor::od::DialogResult AnswerReplace(veltor::od::DialogModel& dialog) {
  using Dialog = veltor::ui::OptionsReplace;
  using veltor::bench::AnsweringUi;
  if (!dynamic_cast<Dialog*>(&dialog)) return veltor::od::DialogResult::kCancel;
  AnsweringUi::Choose(dialog, Dialog::kTableList, "Roads");
  AnsweringUi::Choose(dialog, Dialog::kColumnList, "NAME");
  dialog.SetText(Dialog::kOldValue, "road");
  dialog.SetText(Dialog::kNewValue, "street");
  return dialog.Press(veltor::od::kIdOk).result;
}

struct EditRun {
  std::string printed;
  veltor::session::Session session{[this](std::string_view text) { printed += text; }};
  std::unique_ptr<veltor::session::LinesInput> input;
  veltor::bench::AnsweringUi ui{AnswerReplace, veltor::od::MessageAnswer::kYes};
};

// Loads the drawing, runs `handler` as `name` with Enter at the object prompt, saves; adds the
// command's and the save's seconds to the counters.
void RunAndSave(benchmark::State& state, const std::string& name,
                void (*handler)(veltor::od::CommandContext&)) {
  const char* tmp = std::getenv("TMPDIR");
  const std::string scratch = std::string(tmp ? tmp : "/tmp") + "/veltor-edit-bench-" +
                              std::to_string(static_cast<long>(getpid())) + ".dxf";
  double command_s = 0, save_s = 0, command_cpu_s = 0, save_cpu_s = 0;
  std::string result;
  for (auto _ : state) {
    state.PauseTiming();
    auto run = std::make_unique<EditRun>();
    auto doc = veltor::bench::LoadCity(state);
    if (!doc) return;
    run->session.AddDocument(std::move(doc), "city.dxf");
    run->session.SetUi(&run->ui);
    run->input = std::make_unique<veltor::session::LinesInput>(std::vector<std::string>{""}, nullptr);
    run->session.SetInput(run->input.get());
    state.ResumeTiming();

    Clock::time_point start = Clock::now();
    double cpu = CpuSeconds();
    veltor::od::RunCommand(run->session, name, handler);
    command_s += Seconds(start);
    command_cpu_s += CpuSeconds() - cpu;
    start = Clock::now();
    cpu = CpuSeconds();
    veltor::Status saved = run->session.active()->doc->Save(scratch);
    save_s += Seconds(start);
    save_cpu_s += CpuSeconds() - cpu;

    state.PauseTiming();
    if (!saved.ok()) state.SkipWithError(saved.message().c_str());
    result = run->printed;
    run.reset();  // freeing the drawing is not part of the work
    std::remove(scratch.c_str());
    state.ResumeTiming();
  }
  const double n = static_cast<double>(state.iterations());
  state.counters["command_s"] = command_s / n;
  state.counters["command_cpu_s"] = command_cpu_s / n;
  state.counters["save_s"] = save_s / n;
  state.counters["save_cpu_s"] = save_cpu_s / n;
  size_t line = result.rfind("Completed");
  if (line != std::string::npos) state.SetLabel(result.substr(line, result.find('\n', line) - line));
}

void BM_RmAllThenSave(benchmark::State& state) {
  RunAndSave(state, "VELTOR_RM_ALL", veltor::commands::RmAll);
}

void BM_ReplaceThenSave(benchmark::State& state) {
  RunAndSave(state, "VELTOR_REPLACE", veltor::commands::Replace);
}

}  // namespace

BENCHMARK(BM_RmAllThenSave)->Arg(100000)->Arg(1000000)->Iterations(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplaceThenSave)->Arg(100000)->Arg(1000000)->Iterations(2)->Unit(benchmark::kMillisecond);
