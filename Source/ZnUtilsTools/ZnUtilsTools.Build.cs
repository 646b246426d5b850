// Build rules of the module inside Unreal Engine 5.0.
using UnrealBuildTool;

public class ZnUtilsTools : ModuleRules
{
	public ZnUtilsTools(ReadOnlyTargetRules Target) : base(Target)
	{
		PCHUsage = ModuleRules.PCHUsageMode.UseExplicitOrSharedPCHs;
		CppStandard = CppStandardVersion.Cpp17;

		PublicDependencyModuleNames.AddRange(new string[]
		{
			"Core",
			"CoreUObject",
			"Engine",
			"HTTP"
		});

		// The JSON decoders read with simdjson and fast_float; no public header includes either, so
		// modules that depend on this one need neither. See the two modules under Source/ThirdParty.
		PrivateDependencyModuleNames.AddRange(new string[]
		{
			"simdjson",
			"fast_float"
		});
	}
}
