#include "Math/Vector2D.h"

const FVector2D FVector2D::UnitVector(1.0, 1.0);
const FVector2D FVector2D::ZeroVector(0.0, 0.0);
