#include "protocol/StationText.h"

#include "database/Database.h"
#include "database/Recordset.h"
#include "protocol/LineText.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {
// The widths of the two fields in the station message.
constexpr std::size_t kNumberWidth = 4;
constexpr std::size_t kDescriptionWidth = 15;
}  // namespace

std::optional<std::string> StationTextRefusal(Session& s) {
  std::optional<std::string> refusal;
  quietly([&] {
    Database db = Database::Open(s.state.WorkDbPath, {.readOnly = true});
    Recordset rs = db.OpenRecordset("Clid", RecordsetType::Snapshot);
    const std::string& model = s.product.ProductModel;
    for (; !rs.IsEOF() && !refusal; rs.MoveNext()) {
      const struct {
        const char* name;
        std::string text;
        std::size_t width;
      } fields[] = {{"Architectural Number", TextOf(rs["archnum"].GetValue()), kNumberWidth},
                    {"description", TextOf(rs["clid_string"].GetValue()), kDescriptionWidth}};
      for (const auto& f : fields) {
        const auto u = FirstUncarried(LeftChars(f.text, f.width));
        if (!u) continue;
        refusal = "Station " + TextOf(rs["clid_station"].GetValue()) + " cannot be sent to the " + model + ": its " +
                  f.name + " \"" + f.text + "\" holds " + u->Shown() + ", which the " + model +
                  " cannot show.\n\nChange the " + f.name + " and send again. Nothing has been sent.";
        break;
      }
    }
  });
  return refusal;
}

}  // namespace r6183
