#include <gtest/gtest.h>

#include "gui/shell/GuiPrompter.h"

namespace r6183::gui {
namespace {

TEST(GuiPrompter, FiltersBecomeQtFilters) {
  EXPECT_EQ(GuiPrompter::QtFilter("Database Files (*.mdb)|*.mdb").toStdString(), "Database Files (*.mdb)");
  EXPECT_EQ(GuiPrompter::QtFilter("Text|*.txt|All (*.*)|*.*").toStdString(), "Text (*.txt);;All (*.*)");
}

}  // namespace
}  // namespace r6183::gui
