#include "platform/qt/module/qt_window_module.h"

quillmar::WindowModule* quillmar_start_window_module(const quillmar::WindowModuleHost& host,
                                                     quillmar::Error& error) {
  const quillmar::Result<quillmar::QtWindowModule*> started = quillmar::QtWindowModule::start(host);
  if (started) return started.value();
  error = started.error();
  return nullptr;
}
