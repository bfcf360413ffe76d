// A faceted body shaded from infrared signature data: target or threat.
#pragma once

class Hardbody {};
