#pragma once
// File look-ups and removals of the tool. None of these throws: a failure shows in
// the result. Names and patterns are matched without regard to case in their
// directory, so files written by older installations are found whatever their case.
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace r6183 {

class Session;

// The regular files matching a path whose file name part may hold '*' and '?'
// ("reports/*.RPT"); a pattern ending in ".*" also takes names without an extension.
// Empty on any error.
std::vector<std::filesystem::path> MatchingFiles(std::string_view pathOrPattern);

// True when at least one file matches.
bool IsFile(std::string_view pathOrPattern);

// Deletes every match; journals a match that is still there afterwards.
void RemoveFile(Session& session, std::string_view pathOrPattern);

// Deletes one file, trying up to five times; true once it is gone (or was never
// there). A directory at the path counts as no file.
bool fcnRemoveFile(const std::filesystem::path& path);

// Replaces `target` with a copy of `source`: the target is removed first, then the
// source copied if it exists. True only when the target exists afterwards, so a
// missing source leaves no target and gives false. The source is never removed,
// even when both name the same file.
bool ReplaceWithCopy(const std::filesystem::path& source, const std::filesystem::path& target);

// '*' and '?' matching of one file name, without regard to ASCII case; '?' takes
// one character.
bool WildcardMatch(std::string_view pattern, std::string_view name);

}  // namespace r6183
