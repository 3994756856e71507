#include "options/DipChart.h"

#include "options/DipModel.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmDipSw";
constexpr Where kOn{kModule, "Switch_On"};
constexpr Where kOff{kModule, "Switch_Off"};
constexpr Where kLoad{kModule, "Load"};
}  // namespace

DipChart::DipChart(Session& session) : s_(session) {
  for (int i = 0; i < kSwitches; ++i) lblSwitch.emplace_back(ArrayName("lblSwitch", i), ControlKind::Label);
  shpOn.fill(kAsDesigned);
  shpOff.fill(kAsDesigned);
  cmdClose.OnClick = [this] {
    if (CloseWindow) CloseWindow();
  };
}

void DipChart::Switch_On(int index) {
  step(s_.journal(), kOn, [&] {
    lblSwitch.at(static_cast<std::size_t>(index)).SetText("ON");
    shpOn.at(static_cast<std::size_t>(index)) = kWhite;
    shpOff.at(static_cast<std::size_t>(index)) = kBlack;
  });
  if (Mirror) Mirror();
}

void DipChart::Switch_Off(int index) {
  step(s_.journal(), kOff, [&] {
    lblSwitch.at(static_cast<std::size_t>(index)).SetText("OFF");
    shpOff.at(static_cast<std::size_t>(index)) = kWhite;
    shpOn.at(static_cast<std::size_t>(index)) = kBlack;
  });
  if (Mirror) Mirror();
}

void DipChart::Form_Load(const DipModel& dip) {
  step(s_.journal(), kLoad, [&] {
    const auto positions = SwitchPositions(dip.Values());
    for (int i = 0; i < kSwitches; ++i) {
      const auto& on = positions[static_cast<std::size_t>(i)];
      if (!on) continue;
      if (*on) Switch_On(i);
      else Switch_Off(i);
    }
  });
}

}  // namespace r6183
