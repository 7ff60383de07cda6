#pragma once
#include <QIcon>

// The program's icon, drawn at the sizes the desktop asks for.
QIcon OrvexIcon();
