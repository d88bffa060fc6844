#include "app/status_menu_action.h"

#include <gtest/gtest.h>

namespace quillmar {
namespace {

using Kind = StatusMenuAction::Kind;

TEST(StatusMenuAction, EveryActionHasAnEntryIdOfItsOwn) {
  for (const StatusMenuAction& action :
       std::initializer_list<StatusMenuAction>{{Kind::showAbout, ""},
                                               {Kind::openSettings, ""},
                                               {Kind::checkForUpdates, ""},
                                               {Kind::quit, ""},
                                               {Kind::runCommand, ""},
                                               {Kind::runCommand, "7F6E"},
                                               {Kind::runCommand, "about"},
                                               {Kind::runCommand, "run:about"}}) {
    EXPECT_EQ(statusMenuAction(entryId(action)), action) << entryId(action);
  }
}

TEST(StatusMenuAction, UnknownIdsHaveNoAction) {
  for (const char* id : {"", "run", "About", "about ", "7F6E"}) {
    EXPECT_FALSE(statusMenuAction(id)) << id;
  }
}

}  // namespace
}  // namespace quillmar
