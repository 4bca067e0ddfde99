// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/io/ByteReader.h"
#include "platform/io/ByteWriter.h"

#include <cstdint>
#include <optional>
#include <string>

/// What an entry of a journal is made of. Objects, pictures, versions of pictures and selections have numbers
/// above 0, given in the order in which the journal meets them; 0 stands for none. Numbers are little-endian.
enum class JournalItem : uint8_t {
    /// u32 picture, version, base; i32 width, height; then runs: u32 first word, number of words, the words
    /// of
    /// the stored rows; ended by kEndOfRuns and 0. Base 0: runs give the whole picture, of `width` x
    /// `height`.
    /// Otherwise the picture shows the base, and the runs are what differs.
    Picture = 'P',
    /// A version that its picture does not show, in the same form: base 0: the whole picture; otherwise the
    /// runs hold the exclusive or with the base, which has been told before.
    Version = 'V',
    Object = 'O',    ///< see ObjectRecord
    Command = 'C',   ///< text name, i32 limit of the undo list, parts ended by CommandPart::End
    Future = 'F',    ///< a command that has been undone, the next one to be redone; text name, parts
    Undone = 'U',    ///< the newest command was undone
    Redone = 'R',    ///< the newest undone command was redone
    Withdrawn = 'W', ///< the newest command was forgotten
    List = 'L',      ///< u32 count; u32 object each, bottom first
    Canvas = 'K',    ///< see CanvasRecord
    Document = 'D',  ///< u8 modified; text path, title
    Selection = 'S', ///< u32 selection, region
    Names = 'N',     ///< u32 number in the next name of an object
    More = 'M',      ///< the entries up to the next one without it make up one step
};

/// One part of a command.
enum class CommandPart : uint8_t {
    End = 0,
    Attribute,     ///< u32 object, u8 which, i32 saved
    Name,          ///< u32 object, text saved
    Picture,       ///< u32 picture, version
    List,          ///< u32 count, objects; u32 count, selection; u8 others
    CanvasSize,    ///< i32 width, height
    Selects,       ///< u32 object
    Selection,     ///< u32 selection, region
    SelectionMove, ///< u32 selection; i32 x, y
};

inline constexpr uint32_t kEndOfRuns = 0xFFFFFFFF;

inline void WriteText(CByteWriter& writer, const std::string& text)
{
    writer.U32(static_cast<uint32_t>(text.size()));
    writer.Text(text, text.size());
}

[[nodiscard]] inline bool ReadText(CByteReader& reader, std::string& text)
{
    uint32_t size = 0;
    std::span<const uint8_t> bytes;
    if (!reader.ReadU32(size) || !reader.ReadBytes(size, bytes))
        return false;
    text.assign(bytes.begin(), bytes.end());
    return true;
}
