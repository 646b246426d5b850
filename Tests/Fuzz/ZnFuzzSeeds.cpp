// Writes the seed corpora of the fuzz targets (ZnFuzzSeedSet.h). Usage: ZnFuzzSeeds <corpus root>;
// creates <root>/<Target>/<seed name>.json, each file laid out as its target reads its input.
#include "ZnFuzzSeedSet.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

int main(int argc, char** argv)
{
	if (argc != 2)
	{
		std::fprintf(stderr, "usage: %s <corpus root>\n", argv[0]);
		return 2;
	}
	const std::filesystem::path Root = argv[1];
	for (const ZnFuzzSeedSet::FSeed& Seed : ZnFuzzSeedSet::Make())
	{
		const std::filesystem::path Folder = Root / Seed.Target;
		std::filesystem::create_directories(Folder);
		std::ofstream Out(Folder / (Seed.Name + ".json"), std::ios::binary);
		Out << Seed.Bytes;
		if (!Out)
		{
			std::fprintf(stderr, "cannot write %s\n", (Folder / (Seed.Name + ".json")).string().c_str());
			return 1;
		}
	}
	return 0;
}
