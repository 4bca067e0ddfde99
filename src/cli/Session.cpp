// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Session.h"

#include <algorithm>
#include <utility>

namespace {

constexpr Size kDefaultClientSize{800, 600};

/// The client coordinate in the middle of the pixel that begins at `client`, one axis.
int MiddleOfPixel(int documentCoordinate, int client, int zoom)
{
    if (zoom <= 1)
        return client;
    // Left of the picture the division by the zoom truncates the other way.
    return documentCoordinate < 0 ? client - zoom / 2 : client + zoom / 2;
}

} // namespace

CSession::CSession(std::ostream& output) : m_output(output), m_ui(output), m_app(m_ui, m_clipboard) {}

void CSession::Show(CPixoluneDoc* document)
{
    auto view = std::make_unique<CPixoluneView>(*document);
    view->SetClientSize(kDefaultClientSize);
    m_open.push_back(std::make_unique<OpenDocument>(m_nextNumber++, document, std::move(view)));
    m_current = m_open.back().get();
}

bool CSession::SwitchTo(int number)
{
    const auto found = std::ranges::find(m_open, number, [](const auto& open) { return open->number; });
    if (found == m_open.end())
        return false;
    m_current = found->get();
    return true;
}

void CSession::CloseCurrent()
{
    const auto place =
        std::ranges::find(m_open, m_current, [](const auto& open) { return std::to_address(open); });
    const auto index = static_cast<size_t>(place - m_open.begin());
    CPixoluneDoc* document = m_current->document;
    m_open.erase(place);
    m_app.CloseDocument(document);
    m_current = m_open.empty() ? nullptr : m_open[index == 0 ? 0 : index - 1].get();
}

CommandContext CSession::Context()
{
    CommandContext context{m_app};
    if (HasDocument()) {
        context.document = &Document();
        context.view = &View();
    }
    return context;
}

Outcome CSession::RunMenuCommand(CommandId id)
{
    CommandContext context = Context();
    if (!IsCommandEnabled(context, id))
        return Outcome::Disabled;
    // What could not be done has been said; what had nothing to do is done.
    RunCommand(context, id);
    return Outcome::Done;
}

Outcome CSession::Fail(std::string reason)
{
    m_failureReason = std::move(reason);
    return Outcome::Failed;
}

Point CSession::ToClient(Point scriptPoint) const
{
    if (m_pointerUnit == PointerUnit::ClientPixels)
        return scriptPoint;
    const ViewGeometry& geometry = View().Geometry();
    const Point corner = geometry.ToClient(scriptPoint);
    return {MiddleOfPixel(scriptPoint.x, corner.x, geometry.zoom),
            MiddleOfPixel(scriptPoint.y, corner.y, geometry.zoom)};
}
