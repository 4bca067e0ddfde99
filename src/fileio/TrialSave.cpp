// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/TrialSave.h"

#include "fileio/AnimationFrames.h"
#include "fileio/DocumentFiles.h"
#include "fileio/QuietServices.h"
#include "fileio/SaveLosses.h"
#include "model/Compositing.h"

#include <algorithm>
#include <random>
#include <string>

namespace {

namespace fs = std::filesystem;

/// A name in the temporary folder whose file is removed in the end.
class CTemporaryName {
public:
    explicit CTemporaryName(std::string_view extension)
    {
        std::error_code error;
        const fs::path folder = fs::temp_directory_path(error);
        if (!error)
            m_path = folder / ("pixolune-" + std::to_string(std::random_device()()) + std::string(extension));
    }
    ~CTemporaryName()
    {
        std::error_code ignored;
        fs::remove(m_path, ignored);
    }
    CTemporaryName(const CTemporaryName&) = delete;
    CTemporaryName& operator=(const CTemporaryName&) = delete;

    [[nodiscard]] const fs::path& Path() const { return m_path; }

private:
    fs::path m_path;
};

} // namespace

std::optional<TrialSave> TrySave(const CObjectCanvas& canvas, const SaveFormatRow& format,
                                 const SaveAsOptions& options, const CSettings& settings)
{
    CQuietServices quiet(settings);
    const CTemporaryName file(format.extension);
    CObjectCanvas saved;
    std::error_code error;
    if (file.Path().empty() || !format.write(canvas, file.Path(), options, quiet.Services()) ||
        !LoadFile(saved, file.Path(), quiet.Services()))
        return std::nullopt;
    TrialSave trial{fs::file_size(file.Path(), error), {}};
    if (LimitsOf(format, options, settings).keepsFrames) {
        const CAnimationFrames frames(saved);
        for (size_t index = 0; index < frames.Count(); ++index)
            trial.pictures.push_back(frames.Frame(index));
    } else {
        trial.pictures.push_back(Flatten(saved));
    }
    if (error || trial.pictures.empty() || std::ranges::any_of(trial.pictures, &CPackedDib::IsEmpty))
        return std::nullopt;
    return trial;
}
