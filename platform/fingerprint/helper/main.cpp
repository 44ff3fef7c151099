// Takes the picture of one finger with a sensor that the driver library knows. A process of its own, because
// that library uses the default event loop of its process, which in the program itself belongs to the
// windows, and because a driver may hang. Ends with its socket.
//   zazsensor NUMBER     counted from 1; where there are fewer sensors, the first
#include "Sensor.h"

#include <cstdlib>
#include <sys/prctl.h>
#include <sys/resource.h>

int main(int argc, char** argv)
{
    const rlimit nothing{0, 0};
    setrlimit(RLIMIT_CORE, &nothing); // a dump would hold the finger
    prctl(PR_SET_DUMPABLE, 0);
    return mirvak::helper::Sensor(argc > 1 ? std::atoi(argv[1]) : 1).run();
}
