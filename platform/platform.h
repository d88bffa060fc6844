// Every service of the desktop that the application uses, in one place. The program builds one from
// the real services, a test from those in memory; parts of the application take from it only what
// they need. The services are not owned and must outlive every user.

#pragma once

namespace quillmar {

class AppleScriptEngine;
class Application;
class Bundle;
struct Environment;
class FileSystem;
class Images;
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
  Updaters& updaters;

  /// The process-wide platform that the `shared()` objects are built on. Precondition: install()
  /// has been called.
  static Platform& shared();

  /// Makes `platform` the process-wide one; it must live to the end of the process. Called once, at
  /// start, before any `shared()`.
  static void install(Platform& platform);
};

}  // namespace quillmar
