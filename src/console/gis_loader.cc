#include "console/gis_loader.h"

#include <dlfcn.h>

#include <filesystem>
#include <iterator>
#include <system_error>

#include "drawing/gis/gis_commands.h"
#include "drawing/session/host_commands.h"

namespace veltor::console {

namespace {

// The module is looked for beside the program itself, wherever it was started from.
std::filesystem::path ModulePath() {
  std::error_code error;
  std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  return (error ? std::filesystem::path() : program.parent_path()) / "veltor-gis.so";
}

Result<const gis::GisModule*> Load() {
  const std::string path = ModulePath().string();
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) return Status::Error("GIS module: " + std::string(dlerror()));
  using Entry = const gis::GisModule* (*)();
  auto entry = reinterpret_cast<Entry>(dlsym(handle, gis::kGisModuleEntry));
  if (!entry) return Status::Error("GIS module: " + path + " has no " + gis::kGisModuleEntry);
  return entry();  // the module stays loaded until the program ends
}

}  // namespace

Result<const gis::GisModule*> LoadGisModule() {
  static const Result<const gis::GisModule*> module = Load();
  return module;
}

void RegisterGisCommandsOnDemand(session::Session& s) {
  for (size_t i = 0; i < std::size(gis::kGisCommands); ++i) {
    const gis::GisCommand& command = gis::kGisCommands[i];
    session::AddHostCommand(s, command.name, command.flags, command.summary, [&s, i] {
      Result<const gis::GisModule*> module = LoadGisModule();
      if (!module.ok()) return (void)s.editor().Refuse(module.message());
      (*module)->run_command(s, i);
    });
  }
}

}  // namespace veltor::console
