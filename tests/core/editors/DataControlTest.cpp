// The binding of controls to a recordset's fields.
#include <gtest/gtest.h>

#include "editors/DataControl.h"
#include "core/editors/EditorTestSupport.h"
#include "shell/Conversions.h"

namespace r6183::test {
namespace {

// Schedule 1's events on a data control with four bound controls.
struct BoundEvents {
  BoundEvents()
      : doc("INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup2) VALUES (1, '08:15', 5, 2, 1),"
            " (1, '09:00', 10, 3, 0), (2, '07:00', 20, 4, 1)") {
    data.DatabaseName = doc->state.WorkDbPath;
    data.RecordSource = "Select * from Event where Schedule = 1 order by StartTime";
    data.Bind(time, "StartTime");
    data.Bind(seconds, "Duration");
    data.Bind(group2, "PageGroup2");
    data.Bind(relay, "Tone");
    time.OnChange = [this] { changes.push_back("time " + time.Text()); };
    data.Validate = [this](int& action, bool& save) {
      validations.push_back(std::to_string(action) + (save ? " save" : ""));
      if (dropChanges) save = false;
      if (refuse) action = data_action::Cancel;
    };
    data.Refresh();
  }
  std::string Shown() const {
    return time.Text() + " " + seconds.Text() + " " + std::to_string(group2.Value()) + " " +
           std::to_string(relay.Value());
  }

  EditorSession doc;
  DataControl data{"dtaEvent"};
  Control time{"txtStartTime", ControlKind::TextBox}, seconds{"txtDuration", ControlKind::TextBox};
  Control group2{"chkPageGroup_1", ControlKind::CheckBox}, relay{"optTone", ControlKind::OptionGroup};
  std::vector<std::string> changes, validations;
  bool dropChanges = false, refuse = false;
};

TEST(DataControlTest, BoundControlsShowTheCurrentRecordAndCountAsUnchanged) {
  BoundEvents d;
  EXPECT_EQ(d.Shown(), "08:15 5 1 2");
  EXPECT_EQ(d.changes, std::vector<std::string>{"time 08:15"}) << "filling a control runs its handler";
  d.data.MoveNext();
  EXPECT_EQ(d.Shown(), "09:00 10 0 3");
  for (const Control* c : {&d.time, &d.seconds, &d.group2, &d.relay}) EXPECT_FALSE(c->DataChanged) << c->Name();
  d.data.MoveNext();  // past the end: nothing to show
  EXPECT_EQ(d.Shown(), "  0 0");
  EXPECT_EQ(d.validations, (std::vector<std::string>{"3", "3"}));
}

TEST(DataControlTest, ChangesGoBackAtUpdateOrWhenTheRecordIsLeftUnlessDropped) {
  struct Case {
    const char* how;
    std::function<void(BoundEvents&)> act;
    std::string stored;  // schedule 1 afterwards
  };
  const Case cases[] = {
      {"update", [](BoundEvents& d) { d.data.Update(); }, "08:30|7|0\n09:00|10|0\n"},
      {"move", [](BoundEvents& d) { d.data.MoveNext(); }, "08:30|7|0\n09:00|10|0\n"},
      {"move dropped",
       [](BoundEvents& d) {
         d.dropChanges = true;
         d.data.MoveNext();
       },
       "08:15|5|1\n09:00|10|0\n"},
      {"cancel", [](BoundEvents& d) { d.data.CancelUpdate(); }, "08:15|5|1\n09:00|10|0\n"},
      {"unload", [](BoundEvents& d) { d.data.Unload(); }, "08:30|7|0\n09:00|10|0\n"},
      {"unload dropped",
       [](BoundEvents& d) {
         d.dropChanges = true;
         d.data.Unload();
       },
       "08:15|5|1\n09:00|10|0\n"},
  };
  for (const Case& c : cases) {
    BoundEvents d;
    d.data.Edit();
    d.time.SetText("08:30");
    d.seconds.SetText("7");
    d.group2.SetValue(0);
    EXPECT_TRUE(d.data.AnyChanged());
    c.act(d);
    EXPECT_EQ(d.doc.Peek("SELECT StartTime, Duration, PageGroup2 FROM Event WHERE Schedule = 1 ORDER BY StartTime"),
              c.stored)
        << c.how;
    EXPECT_FALSE(d.data.AnyChanged()) << c.how;
  }
}

TEST(DataControlTest, ARefusedOperationLeavesRecordAndFieldsAsTheyAre) {
  BoundEvents d;
  d.data.Edit();
  d.time.SetText("08:30");
  d.refuse = true;
  d.data.MoveNext();
  EXPECT_EQ(d.time.Text(), "08:30");
  EXPECT_TRUE(d.time.DataChanged);
  EXPECT_EQ(d.data.Recordset().AbsolutePosition(), 0);
  EXPECT_EQ(d.doc.Peek("SELECT StartTime FROM Event WHERE Duration = 5"), "08:15\n");
}

TEST(DataControlTest, AnEmptiedNumberBoxStoresNoValueAndTextThatIsNoNumberIsRefused) {
  BoundEvents d;
  d.data.Edit();
  d.seconds.SetText("");
  d.data.Update();
  EXPECT_EQ(d.doc.Peek("SELECT Duration FROM Event WHERE StartTime = '08:15'"), "<null>\n");
  EXPECT_EQ(d.seconds.Text(), "");
  d.data.Edit();
  d.seconds.SetText("five");
  EXPECT_THROW(d.data.Update(), RuntimeError);
  EXPECT_EQ(d.seconds.Text(), "five") << "the operator's text stays for another try";
  EXPECT_EQ(d.data.Recordset().GetEditMode(), EditMode::InProgress);
}

TEST(DataControlTest, AHandedOverRecordsetIsSharedAndAddNewShowsTheNewRecord) {
  BoundEvents d;
  DataControl other{"dtaEvent"};
  Control otherTime{"txtStartTime", ControlKind::TextBox};
  other.Bind(otherTime, "StartTime");
  d.data.MoveLast();
  other.SetRecordset(d.data.SharedRecordset());
  EXPECT_EQ(otherTime.Text(), "09:00") << "shows the record current in the giver";
  other.AddNew();
  EXPECT_EQ(otherTime.Text(), "00:00") << "the field's default";
  other.Recordset()["Schedule"] = Value(1);
  otherTime.SetText("06:00");
  other.Update();
  d.data.Refresh();  // read again in time order, for both
  EXPECT_EQ(d.time.Text(), "06:00");
  EXPECT_EQ(other.Recordset().RecordCount(), 3);
  other.Unload();
  EXPECT_TRUE(d.data.HasRecordset()) << "the giver keeps its recordset";
}

}  // namespace
}  // namespace r6183::test
