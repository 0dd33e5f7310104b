// The node-status request byte for byte and replies of every kind of peer.
#include "diagnostics/node_status.h"

#include <gtest/gtest.h>

#include "tests/support/node_status_reply.h"

namespace {

TEST(NodeStatus, The_request_asks_for_all_names) {
    std::string expected("\xA2\x48\0\0\0\1\0\0\0\0\0\0\x20", 13);
    expected += "CK" + std::string(30, 'A') + std::string("\0\0\x21\0\1", 5);
    EXPECT_EQ(std::string(kNodeStatusRequest.begin(), kNodeStatusRequest.end()), expected);
}

TEST(NodeStatus, Takes_the_first_name_of_a_reply_that_is_long_enough) {
    const std::vector<uint8_t> one = NodeStatusReply({"PRINTER"});
    const std::vector<uint8_t> three = NodeStatusReply({"FIRST", "SECOND", "THIRD"});
    const std::pair<std::vector<uint8_t>, const char*> rows[] = {
        {one, "PRINTER"},
        {{one.begin(), one.end() - 1}, "untouched"},
        {three, "FIRST"},
        {{three.begin(), three.end() - 1}, "untouched"},
        {Longer(one, 100), "PRINTER"},
        {WithCount(Longer(one, 1024), 0), "PRINTER"},
        {WithCount(Longer(one, 1024), 53), "PRINTER"},
        {WithCount(Longer(one, 1024), 54), "untouched"},
        {NodeStatusReply({""}), " "},
        {NodeStatusReply({" A"}), " A"},
        {NodeStatusReply({"FIFTEEN LETTERS"}), "FIFTEEN LETTERS"},
        {NodeStatusReply({"A \"b\",\xE9"}), "A \"b\",\xE9"},
    };
    for (const auto& [reply, expected] : rows) {
        char name[kNodeNameBytes + 1] = "untouched";
        ParseNodeStatus(reply, name);
        EXPECT_STREQ(name, expected) << reply.size();
    }
}

}  // namespace
