#pragma once
// Helpers of the editor tests: a session with a work copy holding a chosen programming,
// and the operator's typing into a control.
#include <SQLiteCpp/Database.h>

#include <filesystem>
#include <string>
#include <vector>

#include "database/DocumentChecks.h"
#include "editors/Controls.h"
#include "support/TestSupport.h"

namespace r6183::test {

// A session whose work copy is the template changed by `sql`, checked as Open checks a
// document (EventCount and SystemConfig come from it).
struct EditorSession {
  explicit EditorSession(const std::string& sql = "") {
    t->product.ProductTitle = "Title";
    std::filesystem::copy_file(StagedAppDir() / "DEFAULT", t->state.WorkDbPath);
    if (!sql.empty()) SQLite::Database(t->state.WorkDbPath, SQLite::OPEN_READWRITE).exec(sql);
    ValidDatabase(*t, t->state.WorkDbPath);
  }
  Session& operator*() { return *t; }
  Session* operator->() { return t.session.get(); }
  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    for (const auto& m : t.prompter.Shown()) out.push_back(m.text);
    return out;
  }
  // A value straight from the work copy.
  std::string Peek(const std::string& query) {
    SQLite::Database db(t->state.WorkDbPath, SQLite::OPEN_READONLY);
    SQLite::Statement st(db, query);
    std::string out;
    while (st.executeStep()) {
      for (int i = 0; i < st.getColumnCount(); ++i)
        out += (i ? "|" : "") + (st.getColumn(i).isNull() ? std::string("<null>") : st.getColumn(i).getString());
      out += '\n';
    }
    return out;
  }
  TestSession t;
};

// The operator in a text box: the focus selects the whole text, each key goes through the
// box's key filter and replaces or extends what is there; then, unless `leave` is false,
// the focus goes elsewhere. An empty `text` empties the box.
inline void TypeInto(Control& box, const std::string& text, bool leave = true) {
  if (box.OnGotFocus) box.OnGotFocus();
  std::string shown;
  if (text.empty()) box.SetText("");
  for (const char ch : text) {
    int key = static_cast<unsigned char>(ch);
    if (!box.KeyPress(key)) continue;
    shown += static_cast<char>(key);
    box.SetText(shown);
  }
  if (leave && box.OnLostFocus) box.OnLostFocus();
}

// SQL that inserts `count` events into `schedule`, a minute apart from 00:00, on relay 1
// for 1 second in page group 1.
inline std::string EventsSql(int schedule, int count, int firstMinute = 0) {
  return "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(count - 1) +
         ") INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) SELECT " + std::to_string(schedule) +
         ", printf('%02d:%02d', (i + " + std::to_string(firstMinute) + ") / 60, (i + " + std::to_string(firstMinute) +
         ") % 60), 1, 1, 1 FROM n;";
}

}  // namespace r6183::test
