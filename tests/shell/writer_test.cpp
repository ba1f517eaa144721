// SPDX-License-Identifier: MIT
#include "output/writer.h"

#include <gtest/gtest.h>

namespace swsh {
namespace {

using List = std::vector<int64_t>;
using Texts = std::vector<std::string>;

Record port_record(int64_t port, const std::string &link) {
  return Record().add("port", port).add("link", link);
}

TEST(Table, HasAHeaderAndAlignedColumns) {
  EXPECT_EQ(table_text({port_record(3, "up"), port_record(10, "down")}),
            "port  link\n"
            "3     up\n"
            "10    down\n");
}

TEST(Table, AWideCellMovesTheNextColumn) {
  Record record;
  record.add("a", std::string("very wide")).add("b", int64_t{1});
  EXPECT_EQ(table_text({record}),
            "a          b\n"
            "very wide  1\n");
}

TEST(Table, LeavesDetailsOut) {
  EXPECT_EQ(table_text({port_record(3, "up").add_detail("chip_port", int64_t{2})}),
            "port  link\n"
            "3     up\n");
}

TEST(Table, OfNothingIsEmpty) {
  EXPECT_EQ(table_text({}), "");
  EXPECT_EQ(table_text({Record()}), "");
}

TEST(Table, AnEmptyCellKeepsItsColumn) {
  Record first = port_record(1, "").add("note", nullptr);
  Record second = port_record(2, "up");
  EXPECT_EQ(table_text({first, second}),
            "port  link  note\n"
            "1     -     -\n"
            "2     up    -\n");
}

TEST(Cells, ReadLikeWords) {
  const auto plain = [](const Value &value) { return plain_text({"key", value, "", true}); };
  EXPECT_EQ(plain(true), "yes");
  EXPECT_EQ(plain(false), "no");
  EXPECT_EQ(plain(int64_t{-5}), "-5");
  EXPECT_EQ(plain(UINT64_MAX), "18446744073709551615");
  EXPECT_EQ(plain(List{1, 2, 3, 4, 7}), "1-4,7");
  EXPECT_EQ(plain(List{}), "-");
  EXPECT_EQ(plain(Texts{"a", "b"}), "a,b");
  EXPECT_EQ(plain(port_record(3, "up")), "port 3 link up");
  EXPECT_EQ(plain(std::vector<Record>{port_record(3, "up"), port_record(4, "down")}),
            "port 3 link up, port 4 link down");
}

TEST(Cells, ShowWhatTheyAreToldTo) {
  EXPECT_EQ(plain_text({"speed", nullptr, "unknown", true}), "unknown");
  EXPECT_EQ(plain_text({"loopback", true, "on", true}), "on");
}

TEST(Detail, IsALinePerField) {
  EXPECT_EQ(detail_text(port_record(3, "up").add_detail("chip_port", int64_t{2})),
            "port       3\n"
            "link       up\n"
            "chip_port  2\n");
}

TEST(Detail, IndentsNestedRecords) {
  Record record;
  record.add("group", int64_t{1});
  record.add("members", std::vector<Record>{port_record(3, "up"), port_record(4, "down")});
  EXPECT_EQ(detail_text(record),
            "group    1\n"
            "members\n"
            "  port  3\n"
            "  link  up\n"
            "  port  4\n"
            "  link  down\n");
}

TEST(Json, KeepsTheOrderOfKeysAndTheTypes) {
  Record record;
  record.add("z", int64_t{5000000000}).add("a", std::string("x\"y")).add("on", true, "on");
  record.add("none", nullptr, "unknown").add("ports", List{1, 2, 3}).add("names", Texts{"b"});
  record.add("inner", port_record(3, "up"));
  record.add("rows", std::vector<Record>{port_record(4, "down")});
  EXPECT_EQ(json_text(record, Format::json),
            R"({"z":5000000000,"a":"x\"y","on":true,"none":null,"ports":[1,2,3],"names":["b"],)"
            R"("inner":{"port":3,"link":"up"},"rows":[{"port":4,"link":"down"}]})");
}

TEST(Json, HoldsEveryCount) {
  EXPECT_EQ(json_text(UINT64_MAX, Format::json), "18446744073709551615");
}

TEST(Json, OfNoPortsIsAnEmptyArray) {
  EXPECT_EQ(json_text(Record().add("ports", List{}), Format::json), R"({"ports":[]})");
}

TEST(Json, PrettyIsIndented) {
  EXPECT_EQ(json_text(port_record(3, "up"), Format::pretty),
            "{\n  \"port\": 3,\n  \"link\": \"up\"\n}");
}

TEST(Json, TakesBytesThatAreNoText) {
  EXPECT_EQ(json_text(std::string("a\xff\x01"), Format::json), "\"a\xef\xbf\xbd\\u0001\"");
}

TEST(Answers, AreArraysInJson) {
  const Record record = port_record(3, "up");
  EXPECT_EQ(answer_text({Shape::table, {record}, ""}, Format::json),
            "[{\"port\":3,\"link\":\"up\"}]\n");
  EXPECT_EQ(answer_text({Shape::detail, {record}, ""}, Format::json),
            "[{\"port\":3,\"link\":\"up\"}]\n");
}

TEST(Answers, InDetailHaveAnEmptyLineBetweenRecords) {
  const Answer answer = {Shape::detail, {port_record(3, "up"), port_record(4, "down")}, ""};
  EXPECT_EQ(answer_text(answer, Format::human),
            "port  3\n"
            "link  up\n"
            "\n"
            "port  4\n"
            "link  down\n");
  EXPECT_EQ(answer_text({Shape::detail, {}, ""}, Format::human), "");
}

TEST(Answers, ThatAreEmptyAreStillJson) {
  EXPECT_EQ(answer_text({}, Format::json), "[]\n");
  EXPECT_EQ(answer_text({Shape::table, {}, ""}, Format::json), "[]\n");
  EXPECT_EQ(answer_text({}, Format::human), "");
  EXPECT_EQ(answer_text({Shape::table, {}, ""}, Format::human), "");
}

TEST(Answers, InWordsAreForPeople) {
  const Answer answer = {Shape::text, {Record().add("version", std::string("1"))}, "swctl 1\n"};
  EXPECT_EQ(answer_text(answer, Format::human), "swctl 1\n");
  EXPECT_EQ(answer_text(answer, Format::json), "[{\"version\":\"1\"}]\n");
}

TEST(Faults, SayCulpritAndExpectation) {
  Fault fault = wrong_usage("unknown word \"x\"", "x", {"a", "b"});
  fault.context = "port";
  EXPECT_EQ(fault_line(fault), "port: unknown word \"x\", expected one of: a, b");
  EXPECT_EQ(json_text(fault_record(fault), Format::json),
            R"({"error":{"message":"port: unknown word \"x\"","culprit":"x",)"
            R"("expected":["a","b"],"suggestions":[],"status":1}})");
}

TEST(Faults, OfTheChipCarryItsResult) {
  Fault fault;
  fault.status = kRefused;
  fault.message = "no";
  fault.refusal = Refusal{"user_x", 3, -5, std::nullopt};
  EXPECT_EQ(
      json_text(fault_record(fault), Format::json),
      R"({"error":{"message":"no","culprit":null,"expected":[],"suggestions":[],"function":"user_x",)"
      R"("result":-5,"sentence":null,"status":2}})");
}

}  // namespace
}  // namespace swsh
