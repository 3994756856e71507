#include "database/Revision.h"

#include "database/Database.h"
#include "database/Recordset.h"
#include "shell/Conversions.h"
#include "shell/Labels.h"
#include "shell/Session.h"

namespace r6183 {

void UpdateRev(Session& session) {
  step(session.journal(), Where{labels::modProject, "UpdateRev"}, [&] {
    Database db = Database::Open(session.state.WorkDbPath);
    Recordset rs = db.OpenRecordset("Rev");
    rs.MoveFirst();
    rs.Edit();
    rs["rev"] = session.state.ProgramDbRevision;
    rs.Update();
    rs.Close();
    db.Close();
  });
}

void VerifyRev(Session& session, const std::string& path) {
  step(session.journal(), Where{labels::modProject, "VerifyRev"}, [&] {
    Database db = Database::Open(path);
    Recordset rs = db.OpenRecordset("Rev");
    rs.MoveFirst();
    const std::string rev = CStr(rs["rev"].GetValue());
    rs.Close();
    db.Close();
    if (rev > session.state.ProgramDbRevision) {
      const std::string& model = session.product.ProductModel;
      session.Message(model + " Programming Tool may not support all programmed features.\n" +
                      "Upgrade the " + model + " Programming Tool  to prevent receiving\n" +
                      "this message in the future.");
    }
  });
}

}  // namespace r6183
