#include "shell/Session.h"

namespace r6183 {

Session::Session(AppDir appDir, Prompter& prompter, Clock& clock, Pump pump)
    : appDir_(std::move(appDir)),
      prompter_(prompter),
      clock_(clock),
      pump_(std::move(pump)),
      journal_(state.ErrorsDbPath, clock_, pump_) {
  state.SettingsPath = appDir_.PathOf("settings.ini");
  state.ErrorsDbPath = appDir_.PathOf("errors");
  state.DefaultDbPath = appDir_.PathOf("DEFAULT");
  state.WorkDbPath = appDir_.PathOf("~TEMP");
}

}  // namespace r6183
