#include "Platform/Foundation/Bundle.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

using platform::Bundle;

namespace {

/// A bundle with one resource built in, "Shader.vsh".
Bundle bundleWith(std::string_view base64) {
    return Bundle(std::vector<platform::EmbeddedResource>{{"Shader.vsh", base64}});
}

/// A bundle with the text "built in".
Bundle bundleWithText() {
    return bundleWith("YnVpbHQgaW4=");
}

void write(const tests::TemporaryFolder& folder, const std::string& name, std::string_view text) {
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    folder.add(name, bytes);
}

} // namespace

TEST(Bundle, GivesWhatIsBuiltIn) {
    const Bundle bundle = bundleWithText();
    EXPECT_EQ(bundle.string("Shader", "vsh"), "built in");
    const std::string_view text = "built in";
    EXPECT_EQ(bundle.data("Shader", "vsh"), std::vector<std::uint8_t>(text.begin(), text.end()));
}

TEST(Bundle, HasNothingForAnotherNameOrType) {
    const Bundle bundle = bundleWithText();
    EXPECT_FALSE(bundle.data("Shader", "fsh").has_value());
    EXPECT_FALSE(bundle.string("shader", "vsh").has_value());
    EXPECT_FALSE(bundle.data("", "").has_value());
    EXPECT_FALSE(Bundle().data("Shader", "vsh").has_value());
}

TEST(Bundle, HasNothingForBuiltInTextThatIsNotBase64) {
    const Bundle bundle = bundleWith("no base64!");
    EXPECT_FALSE(bundle.data("Shader", "vsh").has_value());
}

TEST(Bundle, AsksAFolderFirst) {
    const tests::TemporaryFolder folder;
    write(folder, "Shader.vsh", "in the folder");
    Bundle bundle = bundleWithText();
    bundle.addFolder(folder.path());
    EXPECT_EQ(bundle.string("Shader", "vsh"), "in the folder");
}

TEST(Bundle, AsksFoldersInTheOrderOfAdding) {
    const tests::TemporaryFolder first;
    const tests::TemporaryFolder second;
    write(first, "a.txt", "first");
    write(second, "a.txt", "second");
    write(second, "b.txt", "second");
    Bundle bundle;
    bundle.addFolder(first.path());
    bundle.addFolder(second.path());
    EXPECT_EQ(bundle.string("a", "txt"), "first");
    EXPECT_EQ(bundle.string("b", "txt"), "second");
}

TEST(Bundle, PassesOverAFolderWithoutTheFileOrThatIsNotThere) {
    const tests::TemporaryFolder folder;
    Bundle bundle = bundleWithText();
    bundle.addFolder(folder.path());
    bundle.addFolder(folder.pathOf("nowhere"));
    EXPECT_EQ(bundle.string("Shader", "vsh"), "built in");
}

TEST(Bundle, ForgetsARemovedFolder) {
    const tests::TemporaryFolder folder;
    write(folder, "Shader.vsh", "in the folder");
    Bundle bundle = bundleWithText();
    bundle.addFolder(folder.path());
    bundle.removeFolder("another");
    EXPECT_EQ(bundle.string("Shader", "vsh"), "in the folder");
    bundle.removeFolder(folder.path());
    EXPECT_EQ(bundle.string("Shader", "vsh"), "built in");
}

TEST(Bundle, LetsAnUnreadableReplacementShadowWhatIsBuiltIn) {
    const tests::TemporaryFolder folder;
    // A folder of that name is there and cannot be read as a file, by any user.
    std::filesystem::create_directory(folder.pathOf("Shader.vsh"));
    Bundle bundle = bundleWithText();
    bundle.addFolder(folder.path());
    EXPECT_FALSE(bundle.data("Shader", "vsh").has_value());
}

TEST(Bundle, LetsAnEmptyReplacementShadowWhatIsBuiltIn) {
    const tests::TemporaryFolder folder;
    write(folder, "Shader.vsh", "");
    Bundle bundle = bundleWithText();
    bundle.addFolder(folder.path());
    EXPECT_EQ(bundle.string("Shader", "vsh"), "");
}

TEST(Bundle, ReadsEveryByteOfAFile) {
    const tests::TemporaryFolder folder;
    std::vector<std::uint8_t> bytes(256);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(i);
    folder.add("all.bin", bytes);
    Bundle bundle;
    bundle.addFolder(folder.path());
    EXPECT_EQ(bundle.data("all", "bin"), bytes);
}

TEST(Bundle, PrefersInstalledFilesToWhatIsBuiltIn) {
    const tests::TemporaryFolder installed;
    write(installed, "Shader.vsh", "installed");
    const Bundle bundle({{"Shader.vsh", "YnVpbHQgaW4="}}, installed.path());
    EXPECT_EQ(bundle.string("Shader", "vsh"), "installed");
}

TEST(Bundle, PrefersRegisteredFoldersToInstalledFiles) {
    const tests::TemporaryFolder installed;
    const tests::TemporaryFolder registered;
    write(installed, "Shader.vsh", "installed");
    write(registered, "Shader.vsh", "registered");
    Bundle bundle({}, installed.path());
    bundle.addFolder(registered.path());
    EXPECT_EQ(bundle.string("Shader", "vsh"), "registered");
}

TEST(Bundle, HasWhatIsBuiltInWhereNothingIsInstalled) {
    const Bundle bundle({{"Shader.vsh", "YnVpbHQgaW4="}}, "/no/such/folder");
    EXPECT_EQ(bundle.string("Shader", "vsh"), "built in");
}

TEST(FrameworkBundle, HoldsTheShadersAsTheyAreInTheSources) {
    Bundle sources;
    sources.addFolder(std::string(ZANTO_SOURCE_DIR) + "/Resources");
    for (const auto& [name, type] :
         {std::pair("VertexPhotoShader", "vsh"), std::pair("FragmentPhotoShader", "fsh"),
          std::pair("FragmentVideoShader", "fsh")}) {
        const auto text = Bundle::framework().string(name, type);
        ASSERT_TRUE(text.has_value()) << name;
        EXPECT_EQ(text, sources.string(name, type)) << name;
    }
}
