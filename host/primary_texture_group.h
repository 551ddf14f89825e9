// The text of the primary texture group, made at build time by
// tools/make_texture_group.cpp.
#pragma once

extern const char kPrimaryTextureGroupText[];
