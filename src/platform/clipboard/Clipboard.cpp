// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/clipboard/Clipboard.h"

#include <utility>

bool CPrivateClipboard::Offer(ClipboardOffer offer)
{
    m_offer = std::move(offer);
    return true;
}

std::optional<std::vector<uint8_t>> CPrivateClipboard::PrivateStream() const
{
    if (!m_offer.privateStream)
        return std::nullopt;
    return m_offer.privateStream();
}

CPackedDib CPrivateClipboard::Picture() const
{
    return m_offer.picture ? m_offer.picture() : CPackedDib();
}

bool CPrivateClipboard::HasContents() const
{
    return m_offer.privateStream || m_offer.picture;
}
