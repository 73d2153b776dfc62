#pragma once

namespace mirelo::libreoffice {

// What the office knows of the menu's commands, and of the state of each: Addons.xcu has the same.
inline constexpr char kScheme[] = "vnd.mirelo:";
inline constexpr char kSettingsCommand[] = "vnd.mirelo:settings";
inline constexpr char kStartCommand[] = "vnd.mirelo:start";
inline constexpr char kStopCommand[] = "vnd.mirelo:stop";
// Its state is the text of the status bar.
inline constexpr char kStatusCommand[] = "vnd.mirelo:status";
inline constexpr char kHelpCommand[] = "vnd.mirelo:help";
// Does nothing, but as with any command the library answers for the states of all from then on.
inline constexpr char kWakeCommand[] = "vnd.mirelo:wake";

// The service that carries the commands out. It takes the frame that they are for.
inline constexpr char kCommandsService[] = "mirelo.Commands";

}  // namespace mirelo::libreoffice
