// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandLine.h"

#include "support/TestFiles.h"
#include "support/TestPictures.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>

#include <cstdlib>
#include <map>
#include <sstream>

namespace {

class CMapStore final : public ISettingsStore {
public:
    std::optional<int32_t> Read(std::string_view name) const override
    {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void Write(std::string_view name, int32_t value) override { values[std::string(name)] = value; }

    std::map<std::string, int32_t, std::less<>> values;
};

struct Ended {
    std::string output;
    std::string errors;
    int status = 0;
};

Ended Call(const std::vector<std::string>& arguments, const std::string& input = {},
           ISettingsStore* store = nullptr)
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream errors;
    const int status = RunCommandLine(arguments, {in, out, errors, store});
    return {out.str(), errors.str(), status};
}

/// Saves a document with two objects and returns its path.
std::string SavedDocument(const CTemporaryFolder& folder)
{
    const std::string path = folder.File("two.pxd").string();
    const Ended ended = Call({"run", "-"}, "new 5 4\nnew-object\nrename 1 \"a \\\"b\\\"\"\nsave " + path);
    EXPECT_EQ(ended.status, 0) << ended.output << ended.errors;
    return path;
}

TEST(CommandLine, CheckTellsWhatIsWhole)
{
    const CTemporaryFolder folder;
    const std::string path = SavedDocument(folder);
    Ended ended = Call({"check", path});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "file \"" + path + "\"\nresult \"whole, 5 x 4, objects 2\"\n");
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 1);
    ended = Call({"check", path});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.output,
              "file \"" + path +
                  "\"\nfault \"object 1 (a \\\"b\\\"): its pixels lie behind the end of the file\"\n"
                  "result \"does not open, whole objects 1 of 2\"\n");
}

TEST(CommandLine, WrongUsageEndsWithTwo)
{
    const std::vector<std::vector<std::string>> kCases = {
        {},
        {"paint"},
        {"run"},
        {"run", "-", "--fast"},
        {"run", "/nowhere/script"},
        {"run", "/"},
        {"run", "a", "b"},
        {"info"},
        {"info", "--xml", "a"},
        {"convert", "a"},
        {"convert", "a", "b.pxd", "--set", "JPGQuality"},
        {"convert", "a", "b.pxd", "--set", "Quality=3"},
        {"convert", "a", "b.pxd", "--set", "JPGQuality=4294967296"},
        {"convert", "a", "b.xyz"},
        {"convert", "a", "b.png", "--colors", "high"},
        {"help", "paint"},
        {"run", "--user-settings", "-"},
    };
    for (const auto& arguments : kCases) {
        const Ended ended = Call(arguments, "echo a");
        EXPECT_EQ(ended.status, 2) << testing::PrintToString(arguments);
        EXPECT_NE(ended.errors, "") << testing::PrintToString(arguments);
    }
    EXPECT_EQ(Call({"--help"}).status, 0);
}

TEST(CommandLine, InfoGoesOnAfterAFileThatCannotBeLoaded)
{
    const CTemporaryFolder folder;
    const std::string path = SavedDocument(folder);
    const std::string absent = folder.File("absent.png").string();
    const Ended text = Call({"info", absent, path});
    EXPECT_EQ(text.status, 1);
    EXPECT_TRUE(text.output.starts_with("message: Load file " + absent + " fail!\nfile ")) << text.output;
    EXPECT_NE(text.output.find("\n1 0 0 5 4 visible=1 locked=0 selected=1 transparency=0 \"a \\\"b\\\"\"\n"),
              std::string::npos)
        << text.output;

    const Ended ended = Call({"info", "--json", absent, path});
    EXPECT_EQ(ended.status, 1);
    const auto json = nlohmann::json::parse(ended.output, nullptr, false);
    ASSERT_EQ(json.size(), 2u) << ended.output;
    EXPECT_EQ(json[0]["message"], "Load file " + absent + " fail!");
    EXPECT_EQ(json[1]["width"], 5);
    EXPECT_EQ(json[1]["objects"].size(), 2u);
    EXPECT_EQ(json[1]["objects"][1]["name"], "a \"b\"");
}

TEST(CommandLine, ConvertJoinsFilesAndLeavesNothingBehindOnFailure)
{
    const CTemporaryFolder folder;
    const std::string path = SavedDocument(folder);
    const std::string target = folder.File("joined.pxd").string();
    EXPECT_EQ(Call({"convert", path, folder.File("absent.pxd").string(), target}).status, 1);
    EXPECT_FALSE(std::filesystem::exists(target));
    EXPECT_EQ(Call({"convert", path, path, path, target, "--set", "JPGQuality=3"}).status, 0);
    const Ended info = Call({"info", target});
    EXPECT_NE(info.output.find("objects 6\n"), std::string::npos) << info.output;
}

TEST(CommandLine, ConvertChoosesTheFormatByTheEnding)
{
    const CTemporaryFolder folder;
    const std::string path = SavedDocument(folder);
    const std::vector<std::vector<std::string>> kCases = {{"a.jpg", "--set", "JPGQuality=30"},
                                                          {"a.GIF"},
                                                          {"a.bmp", "--colors", "16-grays"},
                                                          {"a.png"},
                                                          {"a.tiff", "--set", "TIFFEncodeMode=5"},
                                                          {"a.tga"},
                                                          {"a.pcx"},
                                                          {"a.ico"},
                                                          {"a.cur", "--hotspot", "4,3"},
                                                          {"a.ani"}};
    for (std::vector<std::string> arguments : kCases) {
        SCOPED_TRACE(arguments.front());
        const std::string target = folder.File(arguments.front()).string();
        arguments.front() = target;
        arguments.insert(arguments.begin(), {"convert", path});
        const Ended ended = Call(arguments);
        EXPECT_EQ(ended.status, 0) << ended.errors << ended.output;
        EXPECT_NE(Call({"info", target}).output.find("\ncanvas 5 4 "), std::string::npos);
    }
}

TEST(CommandLine, NativeFilesKeepEmptyNamesAndUseNoNumber)
{
    const CTemporaryFolder folder;
    const std::string path = folder.File("a.pxd").string();
    const std::string script =
        "new 2 2\nrename 0 \"\"\nsave " + path + "\nopen " + path + "\nnew-object\nprint objects\n";
    EXPECT_EQ(Call({"run", "-"}, script).output,
              "0 0 0 2 2 visible=1 locked=0 selected=0 transparency=0 \"\"\n"
              "1 0 0 2 2 visible=1 locked=0 selected=1 transparency=0 \"Obj - 2\"\n");
}

TEST(CommandLine, UserSettingsAreReadAndStoredOnlyOnRequest)
{
    CMapStore store;
    store.values = {{"JPGQuality", 40}, {"EraseLineWidth", 99}};
    const auto before = store.values;
    const std::string script = "get JPGQuality\nget EraseLineWidth\nset JPGQuality 41\nnonsense";
    EXPECT_EQ(Call({"run", "-"}, script, &store).output, "JPGQuality 85\nEraseLineWidth 8\n");
    EXPECT_EQ(store.values, before);
    const Ended with = Call({"run", "--user-settings", "-"}, script, &store);
    EXPECT_EQ(with.output, "JPGQuality 40\nEraseLineWidth 8\n");
    EXPECT_EQ(with.status, 2);
    EXPECT_EQ(store.values["JPGQuality"], 41);
    EXPECT_EQ(store.values["EraseLineWidth"], 8);
}

TEST(CommandLine, DocumentationHoldsTheStatementTable)
{
    const std::vector<uint8_t> bytes = FileContents(PIXOLUNE_DOCS "/command-line.md");
    const std::string page(bytes.begin(), bytes.end());
    const std::string help = Call({"help"}).output;
    EXPECT_NE(page.find("```text\n" + help + "```\n"), std::string::npos) << "put this into the page:\n"
                                                                          << help;
    EXPECT_EQ(Call({"help", "opacity"}).output.find("  opacity K VALUE\n"), 0u);
    EXPECT_NE(Call({"help", "print"}).output.find("  print menu\n"), std::string::npos);
}

/// The exit status of the built program in a shell.
int StatusOf(const std::string& rest)
{
    const int status = std::system((PIXOLUNE_CLI " " + rest + " > /dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(CommandLine, BuiltProgramEndsWithTheStatus)
{
    EXPECT_EQ(StatusOf("run - < /dev/null"), 0);
    EXPECT_EQ(StatusOf("help undo"), 0);
    EXPECT_EQ(StatusOf("info /nowhere.png"), 1);
    EXPECT_EQ(StatusOf("convert /nowhere.png /nowhere.pxd"), 1);
    EXPECT_EQ(StatusOf("run --nonsense"), 2);
    const CTemporaryFolder folder;
    const std::string home = "XDG_CONFIG_HOME=" + folder.Path().string() + " ";
    const std::string program = home + PIXOLUNE_CLI " run - --user-settings";
    EXPECT_EQ(std::system(("echo set JPGQuality 41 | " + program).c_str()), 0);
    EXPECT_EQ(std::system(("echo get JPGQuality | " + program + " | grep -q \"JPGQuality 41\"").c_str()), 0);
    // What goes to the two streams stands in order.
    const std::string log = folder.File("log").string();
    const std::string script = "'echo a\\nundo\\necho b\\nx\\n'";
    const std::string call = "printf " + script + " | " PIXOLUNE_CLI " run --keep-going - > " + log + " 2>&1";
    EXPECT_NE(std::system(call.c_str()), 0);
    const std::vector<uint8_t> bytes = FileContents(log);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "a\nrefused: undo\nb\n-:4: unknown statement \"x\"\n");
}

} // namespace
