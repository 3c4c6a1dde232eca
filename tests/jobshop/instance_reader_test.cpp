// Instance files, well-formed and hostile.
#include "InstanceReader.h"

#include "LowerBound.h"
#include "ScheduleText.h"
#include "shop_fixtures.h"
#include "support/support.h"

using jobshop::parseInstance;
using namespace test_support;

namespace {

TEST(InstanceReader, BlanksCommentsAndLineEndsDoNotMatter) {
  const std::string plain = "2 2\n0 3 1 4\n1 5 0 6\n";
  for (const char* text :
       {"2 2\n0 3 1 4\n1 5 0 6", "2 2\r\n0 3 1 4\r\n1 5 0 6\r\n",
        "\xEF\xBB\xBF# a comment\n  # 9 9\n\n2\t2  \n\n 0  3\t1 4 \n# mid\n1 5 0 6\n \t\n# end"}) {
    EXPECT_EQ(jobshop::instanceText(parseInstance(text, "x.txt")), plain) << text;
  }
  EXPECT_EQ(parseInstance(plain, "some/folder/x.y.txt").name, "x.y");
}

TEST(InstanceReader, FaultsAreNamedWithLineAndExpectation) {
  const std::string header = "expected two numbers, of jobs and of machines, found ";
  const std::string time = "2: expected a time from 0 to 1000000000, found ";
  const std::string endless(40, 'a');
  const std::pair<std::string, std::string> cases[] = {
      {"", "1: " + header + "the end of the file"},
      {"# only\n2\n", "2: " + header + "1 word"},
      {"1001 5\n0 1", "1: expected a number of jobs from 1 to 1000, found \"1001\""},
      {"5 99999999999999999999\n",
       "1: expected a number of machines from 1 to 1000, found \"99999999999999999999\""},
      {"2 1\n0 3\n",
       "3: expected the line of job 1 (2 jobs, the first is job 0), found the end of the file"},
      {"1 2\n\n# short\n0 3 1\n",
       "4: expected 4 numbers for job 0 (a machine and a time, 2 pairs), found 3"},
      {"1 2\n0 3 2 4\n", "2: expected a machine from 0 to 1, found \"2\""},
      {"1 1\n0 -3\n", time + "\"-3\""},
      {"1 1\n0 1000000001\n", time + "\"1000000001\""},
      {"1 1\n0 %s%n\x1b[31m\n", time + "\"%s%n?[31m\""},
      {"1 1\n0 " + endless, time + "\"" + endless.substr(0, 32) + "...\""},
      {"1 1\n0 3\n\n0 4\n", "4: expected the end of the file after 1 job, found \"0\""}};
  for (const auto& c : cases) {
    EXPECT_EQ(errorOf([&] { parseInstance(c.first, "x.txt"); }), "x.txt:" + c.second) << c.first;
  }
  for (const char* name : {"missing/x.txt", ".", "/dev/zero"}) {
    EXPECT_THROW(jobshop::readInstance(name), jobshop::InstanceError) << name;
  }
}

TEST(InstanceReader, TheLowerBoundSeesTheBusiestMachineWithItsWaysInAndOut) {
  // Machine 1 works for 20, is reached after 2 at the soonest and left 3 before the end.
  const auto bound = [](const char* text) {
    return jobshop::lowerBound(parseInstance(text, "x.txt"));
  };
  EXPECT_EQ(bound("2 3\n0 2 1 10 2 3\n0 4 1 10 2 3\n"), 25);
  EXPECT_EQ(bound("2 2\n0 30 1 1\n1 1 0 2\n"), 32);
  EXPECT_EQ(bound("1 2\n1 3 1 4\n"), 7) << "a machine comes twice";
}

}  // namespace
