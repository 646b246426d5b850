// Writing an export file whole: the text goes to a temporary file beside the target, which then
// replaces the target, so a reader never sees half a file and a failure leaves none.
#pragma once

#include <string>

class FZnExportFiles
{
public:
	// False with a one-line message ("cannot write PATH: reason") when the file cannot be written.
	static bool WriteWhole(const std::string& Path, const std::string& Text, std::string& OutError);
};
