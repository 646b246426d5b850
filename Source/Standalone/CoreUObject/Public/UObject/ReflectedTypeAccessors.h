// The free-standing accessors of reflected types: StaticClass<T>(), StaticStruct<T>() and
// StaticEnum<T>(). The generated code specialises them for every reflected type of a module.
#pragma once

class UClass;
class UScriptStruct;
class UEnum;

template <typename ClassType>
UClass* StaticClass();

template <typename StructType>
UScriptStruct* StaticStruct();

template <typename EnumType>
UEnum* StaticEnum();
