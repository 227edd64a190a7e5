#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "korvane/story.h"
#include "zovhost/story_file.h"

// Texts of files, put together by hand.

/// The least that a camera needs: at (0, 0, 10), looking at the origin.
inline std::string CameraText(const std::string& more = "") {
  return R"({"eye": [0, 0, 10], "centre": [0, 0, 0], "up": [0, 1, 0])" + more + "}";
}

/// `more` begins with a comma.
inline std::string ShotText(const std::string& more = "", const std::string& camera = CameraText()) {
  return R"({"camera": )" + camera + more + "}";
}

inline std::string FileText(const std::string& story, const std::string& more = "") {
  return R"({"format": "zovtools story", "version": 1, "story": )" + story + more + "}";
}

/// A story of one sequence of these shots.
inline std::string FileOfShots(const std::string& shots) {
  return FileText(R"({"sequences": [{"shots": [)" + shots + "]}]}");
}

/// Reads what must be read.
inline std::unique_ptr<Korvane::Story> ParseWhole(zovhost::StoryFile& file, const std::string& text) {
  std::string error;
  std::unique_ptr<Korvane::Story> story = file.Parse(text, error);
  EXPECT_NE(story, nullptr) << error;
  return story != nullptr ? std::move(story) : std::make_unique<Korvane::Story>();
}

/// Writes what must be written.
inline std::string FormatWhole(const zovhost::StoryFile& file, const Korvane::Story& story) {
  std::string error;
  const std::string text = file.Format(story, error);
  EXPECT_NE(text, "") << error;
  return text;
}

inline int CountIn(const std::string& text, const std::string& sought) {
  int count = 0;
  for (std::size_t at = text.find(sought); at != std::string::npos; at = text.find(sought, at + 1)) ++count;
  return count;
}

/// What must not be read: one line, and what the file had read before stays with it.
inline std::string GetParseError(const std::string& text) {
  zovhost::StoryFile file;
  const auto before = ParseWhole(file, FileText("{}", R"(, "kept": true)"));
  std::string error;
  EXPECT_EQ(file.Parse(text, error), nullptr) << text.substr(0, 200);
  EXPECT_NE(error, "");
  EXPECT_LT(error.size(), 200U) << error;
  EXPECT_EQ(error.find_first_of("\r\n"), std::string::npos) << error;
  EXPECT_EQ(CountIn(FormatWhole(file, *before), "kept"), 1);
  return error;
}
