#include "cli/results/ResultRecord.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

namespace quillow::cli {
namespace {

using Json = nlohmann::json;

ResultRecord sample() {
    ResultRecord record;
    record.path = "in/a.pdf";
    record.output = "out/a.txt";
    record.status = Reason::partial;
    record.detail = "1 of 3 pages cannot be read";
    record.loss = {500, 2, 1, 1};
    record.pages = 3;
    record.characters = 480;
    record.textBytes = 512;
    record.documentHash = std::string(64, 'a');
    record.textHash = std::string(64, 'b');
    record.milliseconds = 12.3456;
    record.engine = "1.0";
    return record;
}

TEST(ResultRecord, aLineIsOneObjectWithEveryMember) {
    const std::string line = lineOf(sample());

    EXPECT_EQ(line, R"({"schema":1,"path":"in/a.pdf","output":"out/a.txt","status":"partial",)"
                    R"("detail":"1 of 3 pages cannot be read","pages":3,"characters":480,"text_bytes":512,)"
                    R"("loss":{"characters_decoded":500,"characters_without_unicode":2,"pages_without_text":1,)"
                    R"("parts_skipped":1},"document_sha256":")" +
                        std::string(64, 'a') + R"(","text_sha256":")" + std::string(64, 'b') +
                        R"(","milliseconds":12.346,"engine":"1.0"})"
                        "\n");
}

TEST(ResultRecord, aLineThatIsReadGivesTheSameLine) {
    for (const std::string& path : {std::string("a.rtf"), std::string("with \"quotes\"\nand \x01 and \\"),
                                    std::string("\xC3\xA4.pdf"), std::string("\xE4.pdf"), std::string("\xE4\xF6"),
                                    std::string("\xE4"), std::string("-"), std::string(255, 'x')}) {
        ResultRecord record = sample();
        record.path = path;
        record.output = std::nullopt;
        record.textHash = std::nullopt;
        const std::string line = lineOf(record);
        EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);

        const auto read = recordOf(line);

        ASSERT_TRUE(read) << line;
        EXPECT_EQ(read->path, path);
        EXPECT_EQ(lineOf(*read), line);
    }
}

TEST(ResultRecord, aPathThatIsNotUtf8HasItsBytesInBase64) {
    ResultRecord record = sample();
    record.path = "caf\xE9.pdf";

    const Json object = Json::parse(lineOf(record));

    EXPECT_EQ(object["path"], "caf\xEF\xBF\xBD.pdf");
    EXPECT_EQ(object["path_b64"], "Y2Fm6S5wZGY=");
    EXPECT_FALSE(object.contains("output_b64"));
}

TEST(ResultRecord, everyStatusHasItsName) {
    for (int i = 0; i <= static_cast<int>(Reason::skipped); ++i) {
        ResultRecord record = sample();
        record.status = static_cast<Reason>(i);
        const auto read = recordOf(lineOf(record));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->status, record.status);
    }
}

TEST(ResultRecord, linesThatAreNoResultsAreRefused) {
    const std::string line = lineOf(sample());
    EXPECT_FALSE(recordOf(""));
    EXPECT_FALSE(recordOf("[]"));
    EXPECT_FALSE(recordOf("{}"));
    for (std::size_t length = 1; length + 2 < line.size(); ++length)
        EXPECT_FALSE(recordOf(line.substr(0, length))) << length;
    for (const char* member : {"schema", "path", "output", "status", "detail", "pages", "characters", "text_bytes",
                               "loss", "document_sha256", "text_sha256", "milliseconds", "engine"}) {
        Json object = Json::parse(line);
        object.erase(member);
        EXPECT_FALSE(recordOf(object.dump())) << member;
        object[member] = Json::array();
        EXPECT_FALSE(recordOf(object.dump())) << member;
    }
    for (const auto& [member, value] :
         {std::pair("schema", Json(2)), std::pair("status", Json("fine")), std::pair("pages", Json(-1)),
          std::pair("path_b64", Json("Y=2=")), std::pair("path_b64", Json("Y")), std::pair("path_b64", Json("=Y2F")),
          std::pair("path_b64", Json("Y2F=AAAA")), std::pair("path_b64", Json(1))}) {
        Json object = Json::parse(line);
        object[member] = value;
        EXPECT_FALSE(recordOf(object.dump())) << member << value;
    }
}

TEST(ResultRecord, membersThatAreNotKnownAreIgnored) {
    Json object = Json::parse(lineOf(sample()));
    object["language"] = "en";
    EXPECT_TRUE(recordOf(object.dump()));
}

} // namespace
} // namespace quillow::cli
