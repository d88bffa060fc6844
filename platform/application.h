// The running application as the desktop sees it. Main thread.

#pragma once

namespace quillmar {

class Application {
 public:
  virtual ~Application() = default;

  /// Ends the program, with exit status 0, once the current turn of the main queue is over.
  virtual void terminate() = 0;
};

}  // namespace quillmar
