#include "app/NodeSmith.h"

int main(int argc, char **argv)
{
    return runNodeSmith(argc, argv, "CANopen NodeSmith");
}
