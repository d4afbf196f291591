#include <algorithm>
#include <regex>
#include <set>

#include "tests/cli/program_fixture.h"
#include "tests/cli/sample_meshes.h"

namespace zel::test {

namespace {

class ReportPage : public ProgramTest {
 protected:
  [[nodiscard]] static std::string dataText(const std::string& page) {
    const std::string begin = R"(<script type="application/json" id="data">)";
    const std::size_t at = page.find(begin) + begin.size();
    return page.substr(at, page.find("</script>", at) - at);
  }
  /// The data of a page about the arguments.
  [[nodiscard]] Json data(Arguments arguments) const {
    arguments.insert(arguments.begin(), "report");
    arguments.insert(arguments.end(), {"-o", "page.html"});
    expectSuccess(arguments);
    return Json::parse(dataText(content("page.html")));
  }
  /// How many bytes a text in base 64 stands for.
  [[nodiscard]] static std::size_t bytesIn(const Json& text) {
    const auto letters = text.get<std::string>();
    return letters.size() / 4 * 3 - static_cast<std::size_t>(std::ranges::count(letters, '='));
  }
  [[nodiscard]] static Json defect(const Json& mesh, const std::string& name) {
    for (const Json& each : mesh["defects"]) {
      if (each["name"] == name) {
        return each;
      }
    }
    return nullptr;
  }
};

TEST_F(ReportPage, needsNothingBesideItselfAndRunsNothingElse) {
  write("a.obj", tetrahedronObj());
  EXPECT_EQ(data({"a.obj"})["meshes"].size(), 1U);
  const std::string page = content("page.html");
  EXPECT_FALSE(std::regex_search(page.substr(0, page.find("<style>")), std::regex("(src|href)=")));
  for (const char* outside : {"<script src", "<link", "<iframe", "@import", "url(http"}) {
    EXPECT_EQ(page.find(outside), std::string::npos) << outside;
  }
  const std::string policy = page.substr(0, page.find("<style>"));
  EXPECT_NE(policy.find("default-src 'none'"), std::string::npos);
  EXPECT_EQ(policy.find("unsafe"), std::string::npos);
  EXPECT_EQ(policy.find('@'), std::string::npos);
  const std::regex hash("'sha256-[A-Za-z0-9+/]{43}='");
  EXPECT_EQ(std::distance(std::sregex_iterator(policy.begin(), policy.end(), hash), {}), 4);
  EXPECT_NE(page.find("Permission is hereby granted"), std::string::npos);
}

TEST_F(ReportPage, hostileNamesStayText) {
  const std::string name = "<!--<script>@DATA@alert('1')\"&.obj";
  write(name, tetrahedronObj());
  EXPECT_EQ(data({name})["meshes"][0]["name"], name);
  const std::string page = content("page.html");
  EXPECT_EQ(page.find("alert('1')"), page.rfind("alert('1')"));
  EXPECT_EQ(dataText(page).find('<'), std::string::npos);
}

TEST_F(ReportPage, tellsWhatTheMeshHas) {
  write("sheet.obj", sheetObj(4, 3, true));
  write("solid.obj", tetrahedronObj());
  const Json all = data({"sheet.obj", "solid.obj"});
  ASSERT_EQ(all["meshes"].size(), 2U);
  const Json& sheet = all["meshes"][0];
  EXPECT_EQ(sheet["faces"], 12);
  EXPECT_EQ(sheet["shownFaces"], 12);
  EXPECT_EQ(sheet["isThinned"], false);
  EXPECT_EQ(bytesIn(sheet["points"]), 20U * 12);
  EXPECT_EQ(bytesIn(sheet["triangles"]), 24U * 12);
  EXPECT_EQ(bytesIn(sheet["lines"]), 31U * 8);
  EXPECT_EQ(defect(sheet, "openEdges")["count"], 14);
  EXPECT_EQ(bytesIn(defect(sheet, "openEdges")["places"]), 14U * 24);
  const auto total = [](const Json& bars) {
    int sum = 0;
    for (const Json& bar : bars["counts"]) {
      sum += bar.get<int>();
    }
    return sum;
  };
  EXPECT_EQ(total(sheet["lengths"]), 31);
  EXPECT_EQ(total(sheet["angles"]), 48);
  EXPECT_EQ(sheet["unfolding"], "");
  const Json& solid = all["meshes"][1];
  EXPECT_EQ(defect(solid, "unusedNodes")["count"], 2);
  EXPECT_EQ(solid["unfoldedFaces"], 4);
}

TEST_F(ReportPage, thinsABigMeshButNotAboutItsDefects) {
  write("big.obj", sheetObj(100, 100, false));
  const Json mesh = data({"big.obj", "--faces", "4000"})["meshes"][0];
  EXPECT_EQ(mesh["isThinned"], true);
  EXPECT_EQ(mesh["faces"], 20000);
  EXPECT_LE(mesh["shownFaces"].get<int>(), 4000);
  EXPECT_GE(mesh["shownFaces"].get<int>(), 1500);
  EXPECT_EQ(defect(mesh, "openEdges")["count"], 400);
  EXPECT_EQ(bytesIn(defect(mesh, "openEdges")["places"]), 400U * 24);
  const auto rows = [](const Json& text) {  // a point is 12 bytes, so 16 letters
    std::set<std::string> found;
    const auto letters = text.get<std::string>();
    for (std::size_t at = 0; at < letters.size(); at += 16) {
      found.insert(letters.substr(at, 16));
    }
    return found;
  };
  const std::set<std::string> drawn = rows(mesh["points"]);
  const std::set<std::string> open = rows(defect(mesh, "openEdges")["places"]);
  EXPECT_EQ(open.size(), 400U);
  EXPECT_TRUE(std::ranges::includes(drawn, open));
}

TEST_F(ReportPage, oddMeshesAndWrongUse) {
  write("empty.obj", "");
  EXPECT_EQ(data({"empty.obj"})["meshes"][0]["shownFaces"], 0);
  write("odd.obj", "v 0 0 0\nv 1e38 0 0\nv 0 1e38 0\nv nan 0 0\nf 1 2 3\nf 1 1 2\nf 1 2 4\n");
  EXPECT_EQ(data({"odd.obj"})["meshes"][0]["shownFaces"], 1);
  EXPECT_EQ(exitCode({"report", "odd.obj"}), 2);
  EXPECT_EQ(exitCode({"report", "odd.obj", "-o", "./odd.obj"}), 2);
  EXPECT_EQ(exitCode({"report", "missing.obj", "-o", "none.html"}), 3);
  EXPECT_EQ(exitCode({"report", "odd.obj", "-o", "no/folder.html"}), 4);
  EXPECT_FALSE(exists("none.html"));
}

}  // namespace

}  // namespace zel::test
