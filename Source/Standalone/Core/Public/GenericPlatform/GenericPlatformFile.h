// The platform's file system: open files as handles, test and create directories.
//
// Paths are engine strings ("/" separated); relative paths resolve against the process's
// current working directory. No function throws; failures are reported by the result.
#pragma once

#include "CoreTypes.h"

// An open file. Owned by whoever opened it: delete it to close the file.
class CORE_API IFileHandle
{
public:
	virtual ~IFileHandle() = default;

	// Current position in bytes from the start of the file.
	virtual int64 Tell() = 0;
	// Moves to an absolute position; false when the position is negative or the move fails.
	virtual bool Seek(int64 NewPosition) = 0;
	// Moves relative to the end (NewPositionRelativeToEnd is zero or negative).
	virtual bool SeekFromEnd(int64 NewPositionRelativeToEnd = 0) = 0;
	// Reads exactly BytesToRead bytes; false (with the position undefined) when fewer are left.
	virtual bool Read(uint8* Destination, int64 BytesToRead) = 0;
	// Writes all BytesToWrite bytes; false when the system refused some of them.
	virtual bool Write(const uint8* Source, int64 BytesToWrite) = 0;
	// Pushes written bytes to the system; bFullFlush also asks the disk to store them.
	virtual bool Flush(const bool bFullFlush = false) = 0;
	// The file's size in bytes, or -1 when it cannot be known.
	virtual int64 Size() = 0;
};

class CORE_API IPlatformFile
{
public:
	virtual ~IPlatformFile() = default;

	virtual bool FileExists(const TCHAR* Filename) = 0;
	// Size in bytes, or -1 when the file does not exist.
	virtual int64 FileSize(const TCHAR* Filename) = 0;
	virtual bool DeleteFile(const TCHAR* Filename) = 0;
	virtual bool DirectoryExists(const TCHAR* Directory) = 0;
	// Creates one directory; true when it exists afterwards.
	virtual bool CreateDirectory(const TCHAR* Directory) = 0;
	// Removes an empty directory.
	virtual bool DeleteDirectory(const TCHAR* Directory) = 0;
	// Creates the directory and every missing parent; true when it exists afterwards.
	virtual bool CreateDirectoryTree(const TCHAR* Directory);

	// Opens for reading; null when the file cannot be opened. The caller owns the handle.
	virtual IFileHandle* OpenRead(const TCHAR* Filename, bool bAllowWrite = false) = 0;
	// Opens for writing, creating the file; without bAppend an existing file is emptied first.
	// bAllowRead also permits reading through the handle. Null on failure; the caller owns the handle.
	virtual IFileHandle* OpenWrite(const TCHAR* Filename, bool bAppend = false, bool bAllowRead = false) = 0;
};
