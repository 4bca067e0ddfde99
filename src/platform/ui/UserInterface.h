// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

/// Shows how far a long operation has come.
class IProgress {
public:
    virtual ~IProgress() = default;
    /// 0 to 100.
    virtual void SetPosition(int percent) = 0;
};

/// How a file with several layers is opened.
struct LayeredFileChoice {
    bool asOnePicture = false; ///< the merged picture instead of one object per layer
    bool showAgain = true;     ///< ask the next time, too
    /// What the person is told: blending modes, clipping or effects of the layers are lost in objects.
    bool simplifiesLayers = false;
};

/// What the program's logic says to and asks of the person in front of it. Implemented once with windows
/// and once for the command line.
class IUserInterface : public IProgress {
public:
    /// A message box with OK; returns when it is closed.
    virtual void ShowMessage(const std::string& text) = 0;
    /// A Yes/No question; true for Yes.
    [[nodiscard]] virtual bool AskYesNo(const std::string& question) = 0;
    /// The prompt pane of the status bar; empty clears it.
    virtual void SetStatusText(const std::string& text) = 0;
    /// Lets the person change the choice; false when it stays as it is.
    [[nodiscard]] virtual bool ChooseLayeredFile(LayeredFileChoice& /*choice*/) { return false; }
};
