// All services of the desktop that the application uses. The program passes the real services,
// tests pass the in-memory ones (platform/memory). Each part of the application takes only what it
// needs. The services are not owned and must outlive all their users.

#pragma once

namespace quillmar {

class AppleScriptEngine;
class Application;
class Bundle;
class Downloader;
struct Environment;
class FileSystem;
class HotKeys;
class Images;
class LoginItem;
class Pasteboard;
class Processes;
class StatusItem;
class TaskQueues;
class Updaters;
class UserDatabase;
class UserDirectories;
class UserNotificationCenter;
class WindowSystem;
class Workspace;

struct Platform {
  Application& application;
  TaskQueues& queues;
  const Environment& environment;
  const UserDatabase& userDatabase;
  const UserDirectories& userDirectories;
  FileSystem& files;
  const Bundle& bundle;
  Images& images;
  Processes& processes;
  AppleScriptEngine& appleScript;
  Workspace& workspace;
  WindowSystem& windows;
  Pasteboard& pasteboard;
  UserNotificationCenter& notifications;
  StatusItem& statusItem;
  HotKeys& hotKeys;
  Updaters& updaters;
  LoginItem& loginItem;
  Downloader& downloader;

  /// The process-wide platform that the `shared()` objects are built on. Precondition: install()
  /// has been called.
  static Platform& shared();

  /// Makes `platform` the process-wide one. It must live until the process ends. Called once at
  /// start, before any `shared()`.
  static void install(Platform& platform);
};

}  // namespace quillmar
