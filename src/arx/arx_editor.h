// od::Editor over the host's command line: prompts, selection sets, the pickfirst set, output,
// queued command strings and the status-line progress meter.
#pragma once

#include "od/editor.h"

namespace veltor::arx {

class ArxEditor : public od::Editor {
 public:
  void Print(std::string_view text) override;
  od::PromptResult<std::string> GetString(const std::string& prompt, bool allow_spaces) override;
  od::PromptResult<int> GetInt(const std::string& prompt) override;
  od::PromptResult<od::Point3> GetPoint(const std::string& prompt) override;
  od::PromptResult<od::EntityId> GetEntity(const std::string& prompt) override;
  od::PromptResult<od::EntityList> SelectObjects() override;
  od::EntityList ImpliedSelection() override;
  void SetPickfirst(const od::EntityList& entities) override;
  void PostCommand(const std::string& text) override;
  void SendStringToExecute(const std::string& text) override;
  void StartProgress(const std::string& label, int maximum) override;
  void SetProgress(int position) override;
  void EndProgress() override;
  void UpdateDisplay() override;
};

}  // namespace veltor::arx
