#pragma once

/// What the build says of itself in the About box.
namespace BuildIdentity {

constexpr const char* Stamp = "2022/03/16 10:58:27";
constexpr const char* Repository = TARNEL_REPOSITORY;
constexpr int Revision = 40948;

} // namespace BuildIdentity
