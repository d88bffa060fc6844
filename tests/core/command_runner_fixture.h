// A command runner on the in-memory platform, for tests of what it asks, runs and reports.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/command_runner.h"
#include "config/settings_manager.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/label.h"
#include "platform/widgets/text_field.h"
#include "tests/collaborators.h"
#include "tests/core/window_contents.h"

namespace quillmar {

class CommandRunnerTest : public testing::Test {
 protected:
  CommandRunnerTest() {
    memory.userDirectories.home = "/home/ada";
    memory.userDirectories.applicationSupport = {"/home/ada/.config"};
    memory.userDatabase.shell = "/bin/shell";
    memory.files.addFile("/bin/shell", "", 0755);
    memory.environment.variables["PATH"] = "/usr/bin:/bin";
  }
  ~CommandRunnerTest() override {
    const auto stillOpen = PromptPanel::live();
    for (const auto& panel : stillOpen) panel->cancelPressed();
  }

  static MenuItem item(std::string commandText, CommandType type = CommandType::shellCommand) {
    MenuItem item;
    item.id = "id";
    item.title = "Title";
    item.command.type = type;
    item.command.value = std::move(commandText);
    return item;
  }

  /// The next commands print `output` and end with `exitStatus`.
  void commandsGive(std::string output, int exitStatus = 0) {
    memory.processes.setHandler([=](const Process&) {
      return ScriptedRun{.standardOutput = output, .exitStatus = exitStatus};
    });
  }

  void launchesFail(const std::string& description) {
    memory.processes.setHandler(
        [=](const Process&) { return ScriptedRun{.launchError = Error{description}}; });
  }

  void runToTheEnd(const MenuItem& menuItem) {
    runner().run(menuItem);
    memory.queues.runAll();
  }

  CommandRunner& runner() {
    if (!runner_) {
      runner_.emplace(runnerCollaborators(memory.platform, settings(), prompts, logLine()));
    }
    return *runner_;
  }

  SettingsManager& settings() {
    if (!settings_) {
      settings_.emplace(SettingsManager::Collaborators{memory.environment, memory.userDirectories,
                                                       memory.files, center, logLine()});
    }
    return *settings_;
  }

  LogLine logLine() {
    return [this](std::string_view line) { log.emplace_back(line); };
  }

  /// Title and body of every notification shown.
  std::vector<std::pair<std::string, std::string>> notified() const {
    std::vector<std::pair<std::string, std::string>> result;
    for (const auto& shown : memory.notifications.shown()) {
      result.emplace_back(shown.notification.title, shown.notification.body);
    }
    return result;
  }

  /// Texts, field and buttons of the panel in front; empty when there is none.
  std::vector<std::string> askedOnScreen() const {
    std::vector<std::string> shown;
    const Window* const panel = memory.windows.frontWindow();
    if (panel == nullptr) return shown;
    for (const Label* const label : viewsOf<Label>(*panel)) shown.push_back(label->text());
    for (const TextField* const field : viewsOf<TextField>(*panel)) {
      shown.push_back("field [" + field->text() + "]");
    }
    for (const Button* const button : viewsOf<Button>(*panel)) shown.push_back(button->title());
    return shown;
  }

  /// Presses a button of the panel in front.
  void answer(const std::string& buttonTitle) {
    Button* const button = buttonTitled(*memory.windows.frontWindow(), buttonTitle);
    ASSERT_NE(button, nullptr);
    button->press();
  }

  /// Types into the panel in front and confirms.
  void answerWith(const std::string& text) {
    ASSERT_THAT(viewsOf<TextField>(*memory.windows.frontWindow()), testing::SizeIs(1));
    viewsOf<TextField>(*memory.windows.frontWindow())[0]->type(text);
    answer("Run");
  }

  Process onlyProcess() const {
    const std::vector<Process> launched = memory.processes.launched();
    EXPECT_THAT(launched, testing::SizeIs(1));
    return launched.empty() ? Process{} : launched.front();
  }

  using Note = std::pair<std::string, std::string>;

  MemoryPlatform memory;
  PanelPrompts prompts{promptCollaborators(memory.platform)};
  NotificationCenter center;
  std::vector<std::string> log;

 private:
  std::optional<SettingsManager> settings_;
  std::optional<CommandRunner> runner_;
};

}  // namespace quillmar
