// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "document/NewDocument.h"
#include "model/PixoluneDoc.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/settings/Settings.h"
#include "platform/ui/UserInterface.h"
#include "support/TestPictures.h"

#include <string>
#include <vector>

/// Remembers what the program said.
class CRecordingUserInterface final : public IUserInterface {
public:
    void SetPosition(int percent) override { positions.push_back(percent); }
    void ShowMessage(const std::string& text) override { messages.push_back(text); }
    bool AskYesNo(const std::string& question) override
    {
        questions.push_back(question);
        return answer;
    }
    void SetStatusText(const std::string& text) override { statusTexts.push_back(text); }

    /// The messages since the last call.
    std::vector<std::string> TakeMessages() { return std::exchange(messages, {}); }

    std::vector<int> positions;
    std::vector<std::string> messages;
    std::vector<std::string> questions;
    std::vector<std::string> statusTexts;
    bool answer = true;
};

/// Services and an empty document of 40 x 30 pixels.
struct TestDocument {
    CSettings settings;
    CRecordingUserInterface ui;
    CPrivateClipboard clipboard;
    CObjectNameCounter names;
    AppServices services{settings, ui, clipboard, names};
    CPixoluneDoc doc{services};

    TestDocument()
    {
        doc.Canvas().width = 40;
        doc.Canvas().height = 30;
    }
    /// Puts an object on top.
    Ref<CPicObject> Add(CPackedDib dib, int x, int y, bool selected = false)
    {
        Ref<CPicObject> object = ObjectAt(std::move(dib), x, y, names.Next());
        object->SetSelected(selected);
        doc.Canvas().objects.Append(object);
        return object;
    }
    /// Names of the objects, bottom first, each with "*" when selected and "-" when hidden.
    [[nodiscard]] std::string Stack() const
    {
        std::string text;
        for (const Ref<CPicObject>& object : doc.Canvas().objects) {
            text += text.empty() ? "" : " ";
            text += object->image->name.substr(object->image->name.rfind(' ') + 1);
            text += object->IsSelected() ? "*" : "";
            text += object->visible ? "" : "-";
        }
        return text;
    }
};
