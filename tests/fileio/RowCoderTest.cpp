// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/RowCoder.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace reference {

std::vector<uint8_t> CompressRow(const std::vector<uint8_t>& samples)
{
    std::vector<uint8_t> packed;
    for (size_t at = 0; at < samples.size();) {
        const size_t begin = at++;
        while (at < samples.size() && samples[at] == samples[begin] && at - begin < 128)
            ++at;
        if (at - begin > 1) {
            packed.push_back(static_cast<uint8_t>(1 - static_cast<int>(at - begin)));
            packed.push_back(samples[begin]);
            continue;
        }
        while (at < samples.size() && at - begin < 128) {
            ++at;
            if (at < samples.size() && samples[at - 1] == samples[at])
                break;
        }
        packed.push_back(static_cast<uint8_t>(at - begin - 1));
        packed.insert(packed.end(), samples.begin() + static_cast<ptrdiff_t>(begin),
                      samples.begin() + static_cast<ptrdiff_t>(at));
    }
    return packed;
}

} // namespace reference

namespace {

using Bytes = std::vector<uint8_t>;

Bytes Packed(Bytes samples)
{
    const size_t count = samples.size();
    // A sample behind the row that equals the last one must not count.
    samples.resize(count + kRowSlack, samples.empty() ? 0 : samples.back());
    Bytes packed(PackedRowRoom(count));
    packed.resize(CompressRow(samples.data(), count, packed.data()));
    return packed;
}

TEST(RowCoder, PacksAsItAlwaysDid)
{
    struct Row {
        const char* name;
        Bytes samples, packed;
    };
    const Row kRows[] = {
        {"empty", {}, {}},
        {"one sample", {7}, {0, 7}},
        {"two equal", {7, 7}, {0xFF, 7}},
        {"a run begins late behind a literal", {1, 2, 2, 2}, {1, 1, 2, 0xFF, 2}},
        {"pairs that never become runs", {1, 2, 2, 3, 3}, {1, 1, 2, 1, 2, 3, 0, 3}},
        {"longest run", Bytes(128, 9), {0x81, 9}},
        {"run and one", Bytes(129, 9), {0x81, 9, 0, 9}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(reference::CompressRow(row.samples), row.packed);
        EXPECT_EQ(Packed(row.samples), row.packed);
    }
}

TEST(RowCoder, EqualsReferenceAndReadsBack)
{
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        // From noise to long runs.
        const size_t change = 1 + random() % 40;
        Bytes samples(random() % 700);
        uint8_t sample = 0;
        for (uint8_t& each : samples) {
            if (random() % 40 < change)
                sample = static_cast<uint8_t>(random() % 5);
            each = sample;
        }
        const Bytes packed = Packed(samples);
        ASSERT_EQ(packed, reference::CompressRow(samples));

        Bytes read(samples.size() + kRowSlack);
        std::span<const uint8_t> rest = packed;
        ASSERT_TRUE(DecompressRow(rest, samples.size(), read.data()));
        EXPECT_TRUE(rest.empty());
        read.resize(samples.size());
        ASSERT_EQ(read, samples);

        std::span<const uint8_t> skipped = packed;
        ASSERT_TRUE(SkipRows(skipped, samples.size(), 1));
        EXPECT_TRUE(skipped.empty());
        if (!packed.empty()) {
            std::span<const uint8_t> cut = std::span(packed).first(random() % packed.size());
            read.resize(samples.size() + kRowSlack);
            EXPECT_FALSE(DecompressRow(cut, samples.size(), read.data()));
            EXPECT_FALSE(SkipRows(cut, samples.size(), 1));
        }
    }
}

TEST(RowCoder, CutsBlocksAtTheRowsEnd)
{
    const Bytes packed = {4, 1, 2, 3, 4, 5, 128, 128, 0x81, 6, 0, 7};
    std::span<const uint8_t> rest = packed;
    Bytes read(3 + kRowSlack);
    ASSERT_TRUE(DecompressRow(rest, 3, read.data()));
    EXPECT_EQ(Bytes(read.begin(), read.begin() + 3), (Bytes{1, 2, 3}));
    ASSERT_TRUE(DecompressRow(rest, 3, read.data()));
    EXPECT_EQ(Bytes(read.begin(), read.begin() + 3), (Bytes{6, 6, 6}));
    EXPECT_EQ(rest.size(), 2u);
}

TEST(RowCoder, TakesChannelsApartAndJoinsThem)
{
    std::mt19937 random(5);
    for (const size_t count : {0, 1, 3, 15, 64, 131}) {
        Bytes pixels(count * 4);
        for (uint8_t& each : pixels)
            each = static_cast<uint8_t>(random());
        Bytes planes[4];
        for (size_t channel = 0; channel < 4; ++channel) {
            planes[channel].resize(count + kRowSlack);
            GatherChannel(pixels.data(), 4, channel, count, planes[channel].data());
            for (size_t at = 0; at < count; ++at)
                ASSERT_EQ(planes[channel][at], pixels[at * 4 + channel]);
        }
        Bytes joined(count * 4);
        InterleaveRows({planes[0].data(), planes[1].data(), planes[2].data(), planes[3].data()}, count,
                       joined.data());
        EXPECT_EQ(joined, pixels);
    }
}

} // namespace
