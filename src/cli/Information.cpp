// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Information.h"

#include "cli/Printing.h"
#include "cli/Quoting.h"
#include "cli/ScriptRunner.h"
#include "fileio/FormatTable.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

std::string FormatName(const std::string& file)
{
    const FormatRow* format = FindFormat(file);
    return format != nullptr ? std::string(format->name) : std::string();
}

Json DescribeObject(const CPicObject& object)
{
    const Size size = object.Size();
    return {{"name", object.image ? object.image->name : std::string()},
            {"x", object.x},
            {"y", object.y},
            {"width", size.width},
            {"height", size.height},
            {"visible", object.visible},
            {"locked", object.locked},
            {"transparency", object.transparency}};
}

Json DescribeCanvas(const CObjectCanvas& canvas)
{
    Json objects = Json::array();
    for (const Ref<CPicObject>& object : canvas.objects)
        objects.push_back(DescribeObject(*object));
    return {{"width", canvas.width},
            {"height", canvas.height},
            {"parameter", canvas.parameter},
            {"background", canvas.backgroundIndex},
            {"delay", canvas.frameDelay},
            {"transparent", canvas.transparentIndex},
            {"control", canvas.graphicControlByte},
            {"descriptor", canvas.imageDescriptorByte},
            {"objects", std::move(objects)}};
}

/// Calls visit(file, document) for each file, the document none when it cannot be loaded.
template <typename Visit> int VisitFiles(CSession& session, std::span<const std::string> files, Visit visit)
{
    int status = kAllDone;
    for (const std::string& file : files) {
        CPixoluneDoc* document = session.App().OpenDocument(file);
        visit(file, document);
        if (document == nullptr)
            status = kRefusedOrFailed;
        else
            session.App().CloseDocument(document);
    }
    return status;
}

} // namespace

int PrintInformation(CSession& session, std::span<const std::string> files)
{
    return VisitFiles(session, files, [&](const std::string& file, const CPixoluneDoc* document) {
        const std::string note = session.Ui().TakeNote();
        if (document == nullptr)
            return;
        const CObjectCanvas& canvas = document->Canvas();
        session.Output() << "file " << Quoted(file) << '\n'
                         << "format " << Quoted(FormatName(file)) << '\n'
                         << CanvasLine(canvas) << '\n';
        if (!note.empty())
            session.Output() << "note " << Quoted(note) << '\n';
        for (size_t index = 0; index < canvas.objects.Count(); ++index)
            session.Output() << ObjectLine(index, *canvas.objects.At(index)) << '\n';
    });
}

int PrintInformationAsJson(CSession& session, std::span<const std::string> files)
{
    Json all = Json::array();
    session.Ui().KeepMessages();
    const int status = VisitFiles(session, files, [&](const std::string& file, const CPixoluneDoc* document) {
        Json described{{"file", file}, {"format", FormatName(file)}};
        if (std::string note = session.Ui().TakeNote(); !note.empty())
            described["note"] = std::move(note);
        if (document != nullptr)
            described.update(DescribeCanvas(document->Canvas()));
        else
            described["message"] = session.Ui().TakeMessage();
        all.push_back(std::move(described));
    });
    // Names in files may be anything; what is no UTF-8 gets the replacement character.
    session.Output() << all.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    return status;
}
