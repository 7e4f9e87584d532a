#include <fstream>
#include <sstream>

#include "Tests/Journeys/JourneyFixture.h"

namespace {

using nlohmann::json;

class ProtocolTest : public JourneyFixture {
protected:
    /** What a failed command must leave as it is. */
    Json everything() {
        return {perform({{"do", "screens"}}), perform({{"do", "tree"}}), perform({{"do", "rows"}}), player(),
                settings()};
    }
    void expectRefused(const std::string& line) {
        const std::string shown = line.substr(0, 120);
        _helmo->send(line + "\n");
        const auto text = _helmo->readLine();
        ASSERT_TRUE(text) << shown;
        const Json answer = json::parse(*text, nullptr, false);
        ASSERT_TRUE(answer.is_object()) << shown << " was answered with " << *text;
        EXPECT_EQ(answer["ok"], false) << shown;
        const std::string sentence = answer.value("error", "");
        EXPECT_NE(sentence.find(' '), std::string::npos) << shown << ": " << sentence;
        EXPECT_TRUE(sentence.ends_with('.')) << shown << ": " << sentence;
    }
};

TEST_F(ProtocolTest, EveryLineThatCannotBeDoneIsRefusedInASentenceAndChangesNothing) {
    start();
    openSongs();
    tap("Amber Road");
    back();
    const Json before = everything();
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        if (byte != '\n') bytes += static_cast<char>(byte);
    const std::string lines[] = {
        "",
        "no JSON",
        R"({"do":"advance","seconds":1)",
        "[]",
        "null",
        bytes,
        "{\"do\":\"tap\",\"text\":\"\xC3\x28\"}",
        std::string(100'000, '['),
        std::string(2 << 20, 'x'),
        R"({"do":"tap","text":")" + std::string(2 << 20, 'x') + "\"}",
        R"({})",
        R"({"do":null})",
        R"({"do":"explode"})",
        R"({"do":"tap"})",
        R"({"do":"tap","text":"Nobody shows this"})",
        R"({"do":"tap","text":""})",
        R"({"do":"tap","x":10})",
        R"({"do":"tap","x":"10","y":"10"})",
        R"({"do":"tap","x":-1,"y":10})",
        R"({"do":"tap","x":10,"y":480})",
        R"({"do":"tap","x":1e300,"y":0})",
        R"({"do":"tap","text":"Songs","hold":-1})",
        R"({"do":"tap","text":"Songs","end":"somewhere"})",
        R"({"do":"drag","from":[10,100],"to":[10]})",
        R"({"do":"drag","from":[10,100],"to":[10,-5],"seconds":1})",
        R"({"do":"drag","from":[10,100],"to":[10,50],"seconds":-1})",
        R"({"do":"knob"})",
        R"({"do":"knob","turn":0.5})",
        R"({"do":"knob","turn":1e18})",
        R"({"do":"knob","press":1})",
        R"({"do":"advance","seconds":-1})",
        R"({"do":"advance","seconds":1e12})",
        R"({"do":"advance","seconds":null})",
        R"({"do":"tree","views":1})",
        R"({"do":"screenshot","file":7})",
        R"({"do":"screenshot","file":""})",
        R"({"do":"screenshot","file":"/proc/no/picture.png"})",
        R"({"do":"screenshot","file":")" + _music.string() + "\"}",
        R"({"do":"host","call":"explode"})",
        R"({"do":"settings","set":1})",
        R"({"do":"settings","set":{"volume":11}})",
        R"({"do":"settings","set":{"sortByArtist":"yes"}})",
        R"({"do":"settings","set":{"uiMode":3}})",
        R"({"do":"settings","set":{"uiMode":1.5}})",
        R"({"do":"settings","set":{"tabs":"songs"}})",
        R"({"do":"settings","set":{"tabs":[1]}})",
        R"({"do":"settings","set":{"sortByArtist":true,"uiMode":-1}})",
    };
    for (const auto& line : lines) expectRefused(line);
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(_helmo->finish(), 0);
}

TEST_F(ProtocolTest, AnswersComeOneALineInOrderAndNothingElseDoes) {
    std::ofstream(_music / "broken.flac") << "no music";
    std::ofstream(_music / "broken.m3u") << "missing.mp3\n";
    start();
    openSongs();
    // All at once, as a script in a pipe does.
    std::string lines;
    for (int i = 0; i < 200; ++i)
        lines += i % 3 == 0 ? "{\"do\":\"player\"}\n" : i % 3 == 1 ? "nonsense\n" : "{\"do\":\"tabs\"}\r\n";
    _helmo->send(lines + R"({"do":"screens"})");  // the last line without an end
    std::string output;
    EXPECT_EQ(_helmo->finish(&output), 0) << "the end of input is a good end";
    std::vector<json> answers;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) answers.push_back(json::parse(line, nullptr, false));
    ASSERT_EQ(answers.size(), 201u);
    const char* keys[] = {"state", "error", "tabs"};
    for (std::size_t i = 0; i < 200; ++i)
        EXPECT_TRUE(answers[i].contains(keys[i % 3])) << i << ": " << answers[i];
    EXPECT_TRUE(answers[200].contains("stack"));
}

TEST_F(ProtocolTest, QuitEndsItAtOnce) {
    start();
    openSongs();
    _helmo->send("{\"do\":\"quit\"}\n{\"do\":\"screens\"}\n");
    std::string output;
    EXPECT_EQ(_helmo->finish(&output), 0);
    EXPECT_EQ(json::parse(output, nullptr, false), json({{"ok", true}})) << output;
}

}  // namespace
