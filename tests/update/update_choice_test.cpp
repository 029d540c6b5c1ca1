#include "update/update_choice.h"

#include <gtest/gtest.h>

#include "update/semantic_version.h"
#include "update/signed_feed.h"

namespace hushpane::update::tests {
namespace {

const std::string unreachable = unreachableLine;

class UpdateChoiceTest : public testing::Test {
 protected:
  Signer signer, stranger{2};

  AppcastEntry entry(const std::string& version) const {
    return signer.sign(unsignedEntry(version, "https://example.org/" + version));
  }
  std::string choose(const std::string& items) const { return chooseRaw(feedOf(items)); }
  std::string chooseRaw(const std::string& feed) const { return chooseUpdate(feed, signer.publicKey(), "1.2.0"); }
};

TEST_F(UpdateChoiceTest, FindsTheNewestOfTheVersionsThatItCanHave) {
  EXPECT_EQ(choose(item(entry("1.3.0")) + item(entry("1.10.0")) + item(entry("1.10.0-rc.1")) + item(entry("1.9.0"))),
            "newer\t1.10.0\thttps://example.org/1.10.0\n");
  AppcastEntry named = entry("1.4.0"), later = entry("3.0.0");
  named.shortVersion = "1.4 \xe2\x98\x83";
  later.minimumVersion = "2.0.0";
  EXPECT_EQ(choose(item(signer.sign(later)) + item(signer.sign(named))),
            "newer\t1.4 \xe2\x98\x83\thttps://example.org/1.4.0\n");
  for (const char* version : {"1.2.0", "1.2.0+build", "1.2.0-rc.1", "1.1.9", "0.9.0"})
    EXPECT_EQ(choose(item(entry(version))), "none\n") << version;
}

TEST_F(UpdateChoiceTest, TrustsOnlyWhatWasSignedWithTheKey) {
  const auto good = entry("1.3.0");
  std::vector<AppcastEntry> forged(8, good);
  forged[0].version = "1.4.0";
  forged[1].link = "https://example.com/1.3.0";
  forged[2].shortVersion = "9";
  forged[3].minimumVersion = "0.1.0";
  forged[4] = stranger.sign(good);
  forged[5].signature = "";
  forged[6].signature.replace(10, 1, forged[6].signature[10] == 'A' ? "B" : "A");
  forged[7].signature += "AAAA";
  for (const auto& forgery : forged) {
    EXPECT_EQ(choose(item(forgery)), unreachable) << item(forgery);
    EXPECT_EQ(choose(item(forgery) + item(entry("1.2.5"))), "newer\t1.2.5\thttps://example.org/1.2.5\n");
  }
  EXPECT_EQ(choose(""), unreachable);
  for (const std::string& key : {std::string(), std::string("AAAA"), signer.publicKey() + "AAAA", stranger.publicKey()})
    EXPECT_EQ(chooseUpdate(feedOf(item(good)), key, "1.2.0"), unreachable);
  EXPECT_EQ(chooseUpdate(feedOf(item(good)), signer.publicKey(), "unknown"), unreachable);
}

TEST_F(UpdateChoiceTest, LeavesOutOddEntriesEvenIfSigned) {
  const auto signedWith = [this](const std::string& version, const std::string& shortVersion, const std::string& link) {
    return item(signer.sign(unsignedEntry(version, link, shortVersion)));
  };
  const std::string good = "https://example.org/";
  for (const auto& odd :
       {signedWith("2.0", "", good), signedWith("2.0.0\n", "", good), signedWith("2.0.0", "2\t0", good),
        signedWith("2.0.0", "", "http://example.org/"), signedWith("2.0.0", "", "file:///tmp/a"),
        signedWith("2.0.0", "", "https://me@example.org/"), signedWith("2.0.0", "", "https:///a"),
        signedWith("2.0.0", "", "https://example.org/a b"), signedWith("2.0.0", "", good + std::string(4000, 'a'))})
    EXPECT_EQ(choose(odd), unreachable) << odd.substr(0, 200);
  // What is told twice.
  const auto twice = entry("1.3.0");
  const std::string once = item(twice);
  EXPECT_EQ(choose("<item><link>" + twice.link + "</link>" + once.substr(6)), unreachable);
  EXPECT_EQ(choose("<item><enclosure version='9.0.0'/>" + once.substr(6)), unreachable);
  EXPECT_EQ(choose("<item>" + once + "</item>"), unreachable) << "an entry within an entry";
}

TEST_F(UpdateChoiceTest, RefusesHostileFeedsWhole) {
  const std::string good = feedOf(item(entry("1.3.0")));
  ASSERT_EQ(chooseRaw(good), "newer\t1.3.0\thttps://example.org/1.3.0\n");
  std::string many;
  for (int number = 0; number < 1001; ++number) many += "<item/>";
  std::string deep;
  for (int level = 0; level < 30; ++level) deep = "<a>" + deep + "</a>";
  deep += item(entry("1.3.0"));
  for (const std::string& hostile : std::vector<std::string>{
           "", "not a feed", "{\"version\": \"9.0.0\"}", std::string(100, '\0'), "<html><body/></html>", good + good,
           good.substr(0, good.size() - 4), good.substr(0, good.size() / 2), good + std::string(2 << 20, ' '),
           "<!DOCTYPE rss [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;&a;'>]>" + good.substr(3),
           feedOf("<a>&b;</a>" + item(entry("1.3.0"))), feedOf(many + item(entry("1.3.0"))), feedOf(deep),
           feedOf("\xff\xfe" + item(entry("1.3.0")))})
    EXPECT_EQ(chooseRaw(hostile), unreachable) << hostile.substr(0, 200);
  // No beginning of a feed is taken for a whole one, and none is too much for the parser.
  for (std::size_t size = 0; size + 8 < good.size(); ++size)
    ASSERT_EQ(chooseRaw(good.substr(0, size)), unreachable) << size;
}

TEST(SemanticVersionTest, OrdersVersionsAndKnowsWhatIsNone) {
  const std::vector<const char*> ordered{"0.0.1",         "0.1.0",
                                         "0.9.0",         "0.10.0",
                                         "1.0.0-0",       "1.0.0-2",
                                         "1.0.0-10",      "1.0.0-99999999999999999999999",
                                         "1.0.0--",       "1.0.0-alpha",
                                         "1.0.0-alpha.1", "1.0.0-alpha.beta",
                                         "1.0.0-beta.2",  "1.0.0-beta.11",
                                         "1.0.0-rc.1",    "1.0.0",
                                         "1.0.1",         "18446744073709551615.0.0"};
  for (std::size_t left = 0; left < ordered.size(); ++left)
    for (std::size_t right = 0; right < ordered.size(); ++right)
      EXPECT_EQ(*SemanticVersion::parse(ordered[left]) <=> *SemanticVersion::parse(ordered[right]), left <=> right)
          << ordered[left] << " " << ordered[right];
  EXPECT_EQ(SemanticVersion::parse("1.0.0-a+b.01"), SemanticVersion::parse("1.0.0-a"));
  for (const char* none : {"", "1", "1.0", "1.0.0.0", "v1.0.0", "01.0.0", "1.0.0-", "1.0.0-01", "1.0.0-a..b", "1.0.0+",
                           "1.0.0-\xc3\xa4", " 1.0.0", "1.0.0 ", "1.-1.0", "18446744073709551616.0.0", "1..0"})
    EXPECT_FALSE(SemanticVersion::parse(none)) << none;
}

}  // namespace
}  // namespace hushpane::update::tests
