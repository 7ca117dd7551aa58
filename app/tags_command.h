#pragma once
// `nimbrel tags`: fills a template from a program folder's state, so that an
// owner sees what a page will hold without waiting for the next upload, and
// writes the test file of every tag.

#include <cstdio>
#include <filesystem>
#include <string>

namespace nimbrel {

struct TagsRequest {
  std::filesystem::path dir = ".";  // the program folder
  std::string templateFile;        // a path; a bare name not found is looked for in the web-files folder
  std::string outputFile;          // empty: the filled text goes to `out`
  bool all = false;                // "testtags.txt" with every tag, filled into "testtags.php"
};

// "testtags.txt": one line per tag of the vocabulary, "name = %name%".
std::string allTagsTemplate();

// Returns the process exit status: 0 when the output was made, 2 when the
// template or the output cannot be used.
int runTags(const TagsRequest& request, std::FILE* out, std::FILE* err);

}  // namespace nimbrel
