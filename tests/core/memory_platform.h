// A whole platform in memory for tests of the application's parts.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/apple_script.h"
#include "platform/application.h"
#include "platform/bundle.h"
#include "platform/environment.h"
#include "platform/memory/memory_file_system.h"
#include "platform/memory/memory_images.h"
#include "platform/memory/memory_notifications.h"
#include "platform/memory/memory_pasteboard.h"
#include "platform/memory/memory_processes.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/memory/memory_user_database.h"
#include "platform/memory/memory_user_directories.h"
#include "platform/platform.h"
#include "platform/prompts.h"
#include "platform/workspace.h"

namespace quillmar {

struct ScriptedPrompts final : Prompts {
  /// The prompts shown and not answered yet, in order.
  std::vector<std::pair<PromptRequest, PromptCompletion>> open;

  void show(PromptRequest request, PromptCompletion completion) override {
    open.emplace_back(std::move(request), std::move(completion));
  }

  /// Answers the oldest open prompt.
  void answer(bool confirmed, std::optional<std::string> text = std::nullopt) {
    PromptCompletion completion = std::move(open.front().second);
    open.erase(open.begin());
    completion(confirmed, std::move(text));
  }
};

struct ScriptedAppleScript final : AppleScriptEngine {
  using Outcome = Result<std::optional<std::string>, AppleScriptError>;

  /// Absent: no script can be made.
  std::optional<Outcome> outcome = Outcome(std::optional<std::string>("done"));
  std::vector<std::string> executed;

  std::unique_ptr<AppleScript> makeScript(const std::string& source) override {
    if (!outcome) return nullptr;
    struct Script final : AppleScript {
      Script(ScriptedAppleScript& engine, std::string source)
          : engine(engine), source(std::move(source)) {}
      Outcome execute() override {
        engine.executed.push_back(source);
        return *engine.outcome;
      }
      ScriptedAppleScript& engine;
      std::string source;
    };
    return std::make_unique<Script>(*this, source);
  }
};

struct RecordingWorkspace final : Workspace {
  std::optional<Error> error;
  std::vector<std::pair<std::string, std::string>> opened;

  Result<void> openInTerminal(const std::string& title, const std::string& commandLine) override {
    if (error) return *error;
    opened.emplace_back(title, commandLine);
    return {};
  }
};

struct RecordingApplication final : Application {
  bool terminated = false;
  void terminate() override { terminated = true; }
};

struct EmptyBundle final : Bundle {
  std::optional<std::string> pathForResource(const std::string&, const std::string&,
                                             const std::string&) const override {
    return std::nullopt;
  }
};

struct MemoryPlatform {
  RecordingApplication application;
  MemoryTaskQueues queues;
  Environment environment;
  MemoryUserDatabase userDatabase;
  MemoryUserDirectories userDirectories;
  MemoryFileSystem files;
  EmptyBundle bundle;
  MemoryImages images;
  MemoryProcesses processes;
  ScriptedAppleScript appleScript;
  RecordingWorkspace workspace;
  ScriptedPrompts prompts;
  MemoryPasteboard pasteboard;
  MemoryNotifications notifications{queues.mainQueue()};
  MemoryStatusItem statusItem{queues.mainQueue()};

  Platform platform{application, queues,  environment, userDatabase,  userDirectories,
                    files,       bundle,  images,      processes,     appleScript,
                    workspace,   prompts, pasteboard,  notifications, statusItem};
};

}  // namespace quillmar
