#include "core/Messages.h"

#include "core/Dialogs.h"
#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {

const char* const DataOutOfRange = "Data out of range, please try again.";
const char* const TemperatureDiffers =
    "Warning! there is more than 1°C difference between the sample and calibration temperature. This will increase the errors in your measurements. You are advised to make a new calibration using solutions at the same temperature as your sample.";
const char* const PrinterNotReady =
    "The printer is not ready, please check the connection, or if you use Printer/Interface switch box, make sure it is switched to the Printer";

namespace text {
const char* const SensorNotWorking =
    "The Temperature sensor is not working, please check the connection or re-configure the hardware setup.";
}

bool MayReplace(Prompts& prompts, const std::string& name) {
    return !FileExists(name) || prompts.Ask(name + "   This file already exists, would you like to replace it?", true);
}

void ShowFileError(Prompts& prompts, const RuntimeError& error, const char* verb, const std::string& name) {
    prompts.Message("Error" + TrimStr(error.Code()) + verb + name + ":" + error.what() + ".", {}, Icon::Exclamation);
}

}  // namespace kelvo
