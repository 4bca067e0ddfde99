// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/ObjectStacks.h"
#include "window/BenchWindow.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

inline constexpr const char* kPhotoName = "12MP";

/// The window and what it shows now; documents are made only when another one is wanted.
class CStage {
public:
    CBenchWindow window;

    /// A JPG of 12 megapixels; opened anew by OpenPhoto.
    void ShowPhoto();
    void OpenPhoto();
    /// Writes the file when it is wanted for the first time.
    [[nodiscard]] QString PhotoPath();
    void ShowStack(Stack stack);
    void CloseAll();

private:
    std::string m_shown;
};

/// A line of the pencil through twenty points.
void Stroke(CBenchWindow& window, QPoint from);

/// Registers group/operation/size/ours/tN, which runs `times` times a repetition.
void AddWindowCase(const std::string& operation, const std::string& size, int times,
                   const std::function<void(benchmark::State& state)>& run);

/// What documents, their histories and their views take of the memory.
void AddMemoryCases(CStage& stage);
