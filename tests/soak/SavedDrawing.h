#pragma once

#include <filesystem>
#include <string>

/// What is wrong with a drawing that the editor has saved, in words; empty where all of it can be read and every
/// reference of its objects leads to an object.
std::string BrokenInDrawing(const std::filesystem::path& file);
