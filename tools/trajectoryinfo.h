// Describes a trajectory: what its header says, which files the viewer takes, and the encounter in numbers.
#pragma once

#include <QString>

#include "inforecord.h"

class QIODevice;

// Reads the trajectory as the viewer does, but neither its bodies nor its terrain.
InfoFault describeTrajectory(const QString& path, LengthUnit unit, InfoRecord& record);

// The same from an open device.
InfoFault describeTrajectory(QIODevice* device, bool isProcess, LengthUnit unit, InfoRecord& record);
