// Imports of packs, on a settings window over a document in memory.

#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/document_encoder.h"
#include "import/import_coordinator.h"
#include "import/import_sheet_controller.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/text_view.h"
#include "tests/core/settings_window_fixture.h"
#include "tests/views.h"

namespace quillmar {

inline std::string linkTo(const std::string& encodedUrl) {
  return "quillmar://import?url=" + encodedUrl;
}

inline QuillmarConfig packOf(std::vector<MenuCategory> categories) {
  QuillmarConfig pack;
  pack.categories = std::move(categories);
  return pack;
}

/// A pack with one folder and one item.
inline QuillmarConfig packNamed(const std::string& name) {
  QuillmarConfig pack = packOf({folderWith("folder of " + name, 0, {itemWith("item", "Item")})});
  pack.name = name;
  return pack;
}

class ImportFixture : public SettingsWindowFixture {
 protected:
  /// The title of the sheet on the settings window; empty if there is none.
  std::string titleOfSheet() { return sheet() == nullptr ? "" : labelTexts(*sheet()).at(0); }

  /// The texts of the sheet between the listing and the buttons.
  std::vector<std::string> summary() {
    std::vector<std::string> texts = labelTexts(*sheet());
    return {texts.begin() + 2, texts.end()};
  }

  std::string listing() { return viewsOf<TextView>(*sheet()).at(0)->text(); }

  void expectAlert(const std::string& message, const std::string& detail) {
    ASSERT_NE(sheet(), nullptr);
    EXPECT_THAT(labelTexts(*sheet()), testing::ElementsAre(message, detail));
    const auto images = viewsOf<ImageView>(*sheet());
    ASSERT_FALSE(images.empty());
    EXPECT_EQ(images[0]->accessibilityLabel(), "Warning");
  }

  /// Opens a link to the address and answers the download.
  void openLink(int status, const std::string& body) {
    importCoordinator->handle(linkTo("https%3A%2F%2Fpacks.example%2Fp.json"));
    ASSERT_FALSE(memory.downloader.requests.empty());
    memory.downloader.respond(memory.downloader.requests.size() - 1, status, body);
  }

  /// Chooses the file in the open panel, or cancels it if the path is empty.
  void endPanel(const std::string& path) {
    ASSERT_THAT(memory.windows.filePanels(), testing::SizeIs(1));
    const auto end = memory.windows.filePanels()[0]->end;
    end(path.empty() ? std::nullopt : std::optional(path));
    memory.queues.runAll();
  }
};

}  // namespace quillmar
