// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The order in which a GIF stores the rows of a picture, 0 on top: one after another, or interlaced in four
/// passes that begin with rows 0, 4, 2, 1 and go in steps of 8, 8, 4, 2.
class CGifRows {
public:
    CGifRows(int height, bool isInterlaced) : m_height(height), m_step(isInterlaced ? 8 : 1) {}

    [[nodiscard]] bool AtEnd() const { return m_row >= m_height; }
    [[nodiscard]] int Row() const { return m_row; }
    void Advance()
    {
        m_row += m_step;
        while (m_row >= m_height && m_step > 1 && m_pass < 4) {
            m_row = 16 >> ++m_pass;
            m_step = m_pass == 2 ? 8 : 2 * m_row;
        }
    }

private:
    int m_height;
    int m_step;
    int m_pass = 1;
    int m_row = 0;
};
