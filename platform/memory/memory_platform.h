// The complete in-memory platform. Tasks run only when the owner drains the queues.

#pragma once

#include "platform/environment.h"
#include "platform/memory/memory_apple_script_engine.h"
#include "platform/memory/memory_application.h"
#include "platform/memory/memory_bundle.h"
#include "platform/memory/memory_downloader.h"
#include "platform/memory/memory_file_system.h"
#include "platform/memory/memory_hot_keys.h"
#include "platform/memory/memory_images.h"
#include "platform/memory/memory_login_item.h"
#include "platform/memory/memory_notifications.h"
#include "platform/memory/memory_pasteboard.h"
#include "platform/memory/memory_processes.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/memory/memory_updater.h"
#include "platform/memory/memory_user_database.h"
#include "platform/memory/memory_user_directories.h"
#include "platform/memory/memory_window_system.h"
#include "platform/memory/memory_workspace.h"
#include "platform/platform.h"

namespace quillmar {

struct MemoryPlatform {
  MemoryApplication application;
  MemoryTaskQueues queues;
  Environment environment;
  MemoryUserDatabase userDatabase;
  MemoryUserDirectories userDirectories;
  MemoryFileSystem files;
  MemoryBundle bundle;
  MemoryImages images;
  MemoryProcesses processes;
  MemoryAppleScriptEngine appleScript;
  MemoryWorkspace workspace;
  MemoryWindowSystem windows{queues.mainQueue()};
  MemoryPasteboard pasteboard;
  MemoryNotifications notifications{queues.mainQueue()};
  MemoryStatusItem statusItem{queues.mainQueue()};
  MemoryHotKeys hotKeys{queues.mainQueue()};
  MemoryUpdaters updaters;
  MemoryLoginItem loginItem;
  MemoryDownloader downloader;

  Platform platform{
      .application = application,
      .queues = queues,
      .environment = environment,
      .userDatabase = userDatabase,
      .userDirectories = userDirectories,
      .files = files,
      .bundle = bundle,
      .images = images,
      .processes = processes,
      .appleScript = appleScript,
      .workspace = workspace,
      .windows = windows,
      .pasteboard = pasteboard,
      .notifications = notifications,
      .statusItem = statusItem,
      .hotKeys = hotKeys,
      .updaters = updaters,
      .loginItem = loginItem,
      .downloader = downloader,
  };
};

}  // namespace quillmar
