#pragma once

struct CaseTask;

/// Throws away all of a case's data folder but its first file. Throws
/// std::filesystem::filesystem_error "rename", "create_directory", "copy_file" or "remove_all".
void reduceToFirstFile(const CaseTask& task);
