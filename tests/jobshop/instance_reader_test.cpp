// Instance files, well-formed and hostile.
#include "schedule/ScheduleText.h"
#include "shop_fixtures.h"

namespace jobshop_test {
namespace {

TEST(InstanceReader, BlanksCommentsAndLineEndsDoNotMatter) {
  for (const char* text :
       {"2 2\n0 3 1 4\n1 5 0 6", "2 2\r\n0 3 1 4\r\n1 5 0 6\r\n",
        "\xEF\xBB\xBF# a comment\n  # 9 9\n\n2\t2  \n\n 0  3\t1 4 \n# mid\n1 5 0 6\n \t\n# end"}) {
    EXPECT_EQ("2 2\n0 3 1 4\n1 5 0 6\n", instanceText(instanceFrom(text))) << text;
  }
}

TEST(InstanceReader, ErrorsNameTheLineAndTheExpectedText) {
  const std::string time = "2: expected a time from 0 to 1000000000, found ";
  const std::string endless = "%s%n\x1b[31m" + std::string(40, 'a');
  const std::pair<std::string, std::string> cases[] = {
      {"# only\n2\n", "2: expected two numbers, of jobs and of machines, found 1 word"},
      {"1001 5\n0 1", "1: expected a number of jobs from 1 to 1000, found \"1001\""},
      {"2 1\n0 3\n",
       "3: expected the line of job 1 (2 jobs, the first is job 0), found the end of the file"},
      {"1 2\n\n# short\n0 3 1\n",
       "4: expected 4 numbers for job 0 (a machine and a time, 2 pairs), found 3"},
      {"1 2\n0 3 2 4\n", "2: expected a machine from 0 to 1, found \"2\""},
      {"1 1\n0 -3\n", time + "\"-3\""},
      {"1 1\n0 1000000001\n", time + "\"1000000001\""},
      {"1 1\n0 " + endless, time + "\"%s%n?[31m" + std::string(23, 'a') + "...\""},
      {"1 1\n0 3\n\n0 4\n", "4: expected the end of the file after 1 job, found \"0\""}};
  for (const auto& [text, fault] : cases) {
    EXPECT_EQ("x.txt:" + fault, errorOf([&, t = text] { instanceFrom(t); })) << text;
  }
  for (const char* name : {"missing/x.txt", ".", "/dev/zero"}) {
    EXPECT_THROW(readInstance(name), InstanceError) << name;
  }
}

}  // namespace
}  // namespace jobshop_test
