#include "editors/ConflictModel.h"

namespace r6183 {

ConflictModel::ConflictModel(int& reply) : reply_(reply) {
  reply_ = conflict_reply::Cancel;
  cmdYes.OnClick = [this] { Answer(conflict_reply::Yes); };
  cmdNo.OnClick = [this] { Answer(conflict_reply::No); };
  cmdCancel.OnClick = [this] { Answer(conflict_reply::Cancel); };
}

void ConflictModel::Fill(std::string_view station, std::string_view archnum, const ConflictList& conflicts) {
  lblStation.SetText(std::string(station));
  lblArchnum.SetText(std::string(archnum));
  lstConflict.Clear();
  for (const ConflictEntry& e : conflicts) lstConflict.AddItem(ConflictLine(e));
}

void ConflictModel::Answer(int reply) {
  reply_ = reply;
  if (CloseWindow) CloseWindow();
}

}  // namespace r6183
