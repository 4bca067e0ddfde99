// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/TiffFile.h"

#include "platform/Limits.h"

#include <algorithm>
#include <cstring>

namespace {

struct OptionsDeleter {
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
using Options = std::unique_ptr<TIFFOpenOptions, OptionsDeleter>;

Options QuietOptions()
{
    Options options(TIFFOpenOptionsAlloc());
    if (options == nullptr)
        return options;
    // A handler that returns other than 0 keeps the message from the library's own one, which prints it.
    const TIFFErrorHandlerExtR quiet = [](TIFF*, void*, const char*, const char*, va_list) { return 1; };
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), quiet, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), quiet, nullptr);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kMaxTiffAllocation);
    return options;
}

TiffMemory& MemoryOf(thandle_t handle)
{
    return *static_cast<TiffMemory*>(handle);
}

tmsize_t ReadMemory(thandle_t handle, void* buffer, tmsize_t size)
{
    TiffMemory& memory = MemoryOf(handle);
    const uint64_t left = memory.bytes.size() - std::min<uint64_t>(memory.position, memory.bytes.size());
    const auto count =
        static_cast<size_t>(std::min<uint64_t>(left, static_cast<uint64_t>(std::max<tmsize_t>(size, 0))));
    if (count > 0)
        std::memcpy(buffer, memory.bytes.data() + memory.position, count);
    memory.position += count;
    return static_cast<tmsize_t>(count);
}

toff_t SeekMemory(thandle_t handle, toff_t offset, int origin)
{
    TiffMemory& memory = MemoryOf(handle);
    const uint64_t base = origin == SEEK_CUR ? memory.position : origin == SEEK_END ? memory.bytes.size() : 0;
    memory.position = base + offset;
    return memory.position;
}

int MapMemory(thandle_t handle, void** base, toff_t* size)
{
    const TiffMemory& memory = MemoryOf(handle);
    // The library only reads from a file opened for reading.
    *base = const_cast<uint8_t*>(memory.bytes.data());
    *size = memory.bytes.size();
    return 1;
}

std::FILE* StreamOf(thandle_t handle)
{
    return static_cast<std::FILE*>(handle);
}

tmsize_t ReadStream(thandle_t handle, void* buffer, tmsize_t size)
{
    return static_cast<tmsize_t>(std::fread(buffer, 1, static_cast<size_t>(size), StreamOf(handle)));
}

tmsize_t WriteStream(thandle_t handle, void* buffer, tmsize_t size)
{
    return static_cast<tmsize_t>(std::fwrite(buffer, 1, static_cast<size_t>(size), StreamOf(handle)));
}

toff_t SeekStream(thandle_t handle, toff_t offset, int origin)
{
    if (::fseeko(StreamOf(handle), static_cast<off_t>(offset), origin) != 0)
        return static_cast<toff_t>(-1);
    return static_cast<toff_t>(::ftello(StreamOf(handle)));
}

toff_t StreamSize(thandle_t handle)
{
    const off_t position = ::ftello(StreamOf(handle));
    const toff_t size = SeekStream(handle, 0, SEEK_END);
    static_cast<void>(::fseeko(StreamOf(handle), position, SEEK_SET));
    return size;
}

int KeepOpen(thandle_t)
{
    return 0;
}

} // namespace

TiffHandle OpenTiff(TiffMemory& memory)
{
    const Options options = QuietOptions();
    if (options == nullptr)
        return nullptr;
    return TiffHandle(TIFFClientOpenExt(
        "", "r", &memory, ReadMemory, [](thandle_t, void*, tmsize_t) { return tmsize_t{0}; }, SeekMemory,
        KeepOpen, [](thandle_t handle) { return static_cast<toff_t>(MemoryOf(handle).bytes.size()); },
        MapMemory, [](thandle_t, void*, toff_t) {}, options.get()));
}

TiffHandle CreateTiff(std::FILE* stream)
{
    const Options options = QuietOptions();
    if (options == nullptr || stream == nullptr)
        return nullptr;
    return TiffHandle(TIFFClientOpenExt(
        "", "w", stream, ReadStream, WriteStream, SeekStream, KeepOpen, StreamSize,
        [](thandle_t, void**, toff_t*) { return 0; }, [](thandle_t, void*, toff_t) {}, options.get()));
}
