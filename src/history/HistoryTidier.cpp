// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/HistoryTidier.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Form = CPictureVersion::Form;

constexpr size_t kPieceWords = size_t{1} << 16;
constexpr size_t kLeastPackedBytes = 4096;
/// Undo of what is packed takes a millisecond for each megabyte.
constexpr size_t kMostPackedBytes = size_t{8} << 20;

/// The pixels of the version; none when they have to be made first.
const CPackedDib* PixelsOf(const CRasterImage& image, const CPictureVersion& version)
{
    if (version.Kept() == Form::Whole)
        return &version.Picture();
    return version.Kept() == Form::Shown && image.IsSettled() ? &image.Dib() : nullptr;
}

const uint32_t* WordsOf(const CPackedDib& dib)
{
    return reinterpret_cast<const uint32_t*>(dib.Bits().data());
}

} // namespace

/// Finds pictures that may be kept in less memory.
class CHistoryTidier::CSearch final : public ICommandParts {
public:
    struct Found {
        Ref<CRasterImage> image;
        Ref<CPictureVersion> version;
    };
    void Picture(const Ref<CRasterImage>& image, const Ref<CPictureVersion>& saved) override
    {
        if (!saved->SkipUnusedBases() || saved->IsTidy())
            return;
        found.push_back({image, saved});
    }
    std::vector<Found> found; ///< oldest first
};

bool CHistoryTidier::Begin(CPixoluneDoc& document)
{
    CSearch search;
    for (const auto& command : document.History().UndoList())
        command->VisitParts(search);
    for (const auto& command : document.History().RedoList())
        command->VisitParts(search);
    for (const auto& [image, version] : search.found) {
        if (version->Kept() == Form::Changed) {
            m_packing = version;
            return true;
        }
        const CPackedDib* base = version->Base() ? PixelsOf(*image, *version->Base()) : nullptr;
        if (base == nullptr)
            continue;
        if (!HaveOneLayout(version->Picture(), *base)) {
            version->SetTidy();
            continue;
        }
        m_comparison.emplace(image, version, version->Base(), CPixelChangesBuilder(base->Bits().size() / 2));
        return true;
    }
    return false;
}

void CHistoryTidier::GoOnComparing()
{
    auto& [image, version, followed, changes, done] = *m_comparison;
    // Versions never change what they show, but either may be kept in another way by now.
    const bool isAsBefore = version->Kept() == Form::Whole && version->Base() == followed;
    const CPackedDib* base = isAsBefore ? PixelsOf(*image, *followed) : nullptr;
    if (base == nullptr) {
        m_comparison.reset();
        return;
    }
    const CPackedDib& own = version->Picture();
    const size_t all = own.Bits().size() / sizeof(uint32_t);
    const size_t count = std::min(kPieceWords, all - done);
    if (!changes.Compare(done, WordsOf(own) + done, WordsOf(*base) + done, count)) {
        version->SetTidy();
        m_comparison.reset();
        return;
    }
    done += count;
    if (done < all)
        return;
    if (std::optional<CPixelChanges> finished = changes.Finish())
        version->BecomeChanged(std::move(*finished));
    else
        version->SetTidy();
    m_comparison.reset();
}

void CHistoryTidier::GoOnPacking()
{
    if (m_packing->Kept() == Form::Changed) {
        CPixelChanges& changes = m_packing->Changes();
        const bool isWorthwhile =
            changes.HeldBytes() >= kLeastPackedBytes && changes.HeldBytes() <= kMostPackedBytes;
        if (isWorthwhile && changes.PackPiece(m_packer, m_unpacker))
            return;
        m_packing->SetTidy();
    }
    m_packing = nullptr;
}

void CHistoryTidier::Forget()
{
    m_comparison.reset();
    m_packing = nullptr;
}

bool CHistoryTidier::Work(CPixoluneDoc& document, std::chrono::microseconds budget)
{
    const auto end = std::chrono::steady_clock::now() + budget;
    do {
        if (m_comparison)
            GoOnComparing();
        else if (m_packing)
            GoOnPacking();
        else if (!Begin(document))
            return false;
    } while (std::chrono::steady_clock::now() < end);
    return true;
}
