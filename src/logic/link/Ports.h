#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "link/PortDevice.h"

namespace kelvo {

class Prompts;

/// The two settings of the port that are kept per user, apart from the settings file of the program.
struct PortSettings {
    std::int32_t BitRate = 9600;
    std::int16_t PortNumber = 1;

    /// Section "Startup" of `file`. A rate below 300 reads as 9600, a number below 1 as 1; so does what is absent.
    static PortSettings Load(const std::string& file);
    /// Makes the folder when it is missing. @return false when the values could not be written.
    bool Save(const std::string& file) const;
};

/// Milliseconds that a character of 10 bits takes: 10000 / rate as a whole number, halves to even. 4800 -> 2.
float CharTimeMs(std::int32_t bitRate);

/// What the dialog `frmPortSettings` shows. The dialog object lives as long as the link runs, shown or not.
struct PortDialog {
    enum class Window { Unloaded, Hidden, Minimised, Normal };
    Window window = Window::Unloaded;
    std::vector<std::string> cboPort;
    int portIndex = -1;  ///< -1: no selection
    std::vector<std::string> cboBitRate;
    int rateIndex = -1;
    std::string txtStatus;
    std::string advice;  ///< one line under the status, what the analyst can do about a refused port
};

/// The one serial port through which the interface is reached: which ports there are, opening the chosen one, and
/// the state of the small dialog that repairs the choice. It knows nothing of what travels over the port.
class CommPort {
 public:
    static constexpr std::array<const char*, 8> BitRates = {"300",  "1200",  "2400",  "4800",
                                                            "9600", "19200", "57600", "115200"};

    /// @param settingsFile file of the two kept settings
    CommPort(PortDevice& device, Prompts& prompts, std::string settingsFile)
        : device_(device), prompts_(prompts), settingsFile_(std::move(settingsFile)) {}

    std::int32_t BitRate = 0;                 ///< bits per second in force
    std::int16_t PortNumber = 0;              ///< 1 is COM1; 0 or below: none
    std::vector<std::string> AvailablePorts;  ///< "COM1" and so on, ascending
    bool PortAvailable = false;               ///< the kept port stood in the list when the dialog loaded
    bool PortOpened = false;                  ///< the last opening by StartLink succeeded
    bool PortValid = false;                   ///< result of the last check
    PortDialog Dialog;

    bool Loaded() const { return Dialog.window != PortDialog::Window::Unloaded; }
    /// Loads the dialog when it is not: settings, scan, check, lists. The check may show it.
    void Load();
    /// Takes the dialog away and what its lists hold.
    void Unload();
    void SetWindow(PortDialog::Window window);
    void SetStatus(std::string text);
    /// The dialog's lists, as the analyst has chosen.
    void SelectPort(int index) { Dialog.portIndex = index; }
    /// Choosing a rate applies the time-outs of the rate in force, not of the one chosen.
    void SelectRate(int index);
    void cmdOK();
    void cmdCancel() { SetWindow(PortDialog::Window::Hidden); }

    /// Tries ports 1 to 16 in turn by opening them. A port in use elsewhere is listed; one that cannot be opened
    /// for any other reason is not. A port that was open before is open again afterwards.
    void ScanPorts();
    void LoadPortSettings();
    /// @return false when they could not be written
    bool SavePortSettings() const;
    /// Opens the port with the framing 8, N, 1 and a receive buffer of one frame. @return false as soon as a step
    /// fails; the port is then left as that step left it.
    bool fncInitializeComPort(std::int32_t bitRate, std::int16_t portNumber);
    bool fncCheckForValidPort();
    void SetBitRateComboBox();
    void SetPortComboBox();
    void SetPortTimeouts(std::int32_t bitRate);
    /// Takes the dialog's choice and opens it; what is not chosen stays as it is. The number is the last single
    /// character of the port's name, so COM10 to COM16 come out as 0 to 6.
    void ApplyPortSelection();

    /// Called after each change: of the window, for whoever shows and hides it, then for what it shows.
    std::function<void()> WindowChanged, Changed;

 private:
    void RefusePort(std::string status);
    /// @return the code of the attempt, `PortNoError` when it is open
    int OpenForScan(int number);
    void Tell() {
        if (WindowChanged) WindowChanged();
        if (Changed) Changed();
    }

    PortDevice& device_;
    Prompts& prompts_;
    std::string settingsFile_;
};

}  // namespace kelvo
