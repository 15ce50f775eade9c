#!/usr/bin/python3
"""make_results.py NODES FIELDS ORDER ARRANGEMENT FILE: writes a results file of random values.

ORDER is < (little-endian) or >, ARRANGEMENT ascending or shuffled.
"""

import sys

import numpy

FIELD_NAMES = (
    "kU kV kW kP kT kKin kDiss kScal1 kTotalT kEnth kVOF kElecPot kVelPot kTurbMu kLiqFrac kTotalP kSteam kHumid "
    "kRotVel kVeff kCeff kECurX kECurY kECurZ kRho kVisc kCond kCp kSurfT kEmis kTransmis kDRhoDP kVolum kElRes "
    "kWallRough kSThick kSpecDifu kContRes kThetaJB kThetaJC"
).split()


def main(node_count, field_count, order, arrangement, path):
    random = numpy.random.default_rng(1)
    record = numpy.dtype([("node", order + "i4"), ("values", order + "f8", field_count)])

    def integers(*values):
        return numpy.array(values, order + "i4").tobytes()

    with open(path, "wb") as file:
        file.write(bytes(4) if order == "<" else b"\0\0\0\1")
        file.write(integers(2024, 0, 0))
        file.write(b"now".ljust(26, b"\0") + b"Random values".ljust(256, b"\0"))
        file.write(integers(node_count, node_count, -1, 1, 1, 1, 1))
        file.write(numpy.array([1.0, 0.1], order + "f8").tobytes())
        file.write(integers(-1, field_count))
        for name in FIELD_NAMES[:field_count]:
            file.write(name.encode().ljust(21, b"\0"))
        file.write(integers(0))

        nodes = numpy.arange(1, node_count + 1)
        if arrangement == "shuffled":
            random.shuffle(nodes)
        for begin in range(0, node_count, 100_000):
            part = nodes[begin : begin + 100_000]
            records = numpy.empty(len(part), record)
            records["node"] = part
            records["values"] = random.standard_normal((len(part), field_count))
            file.write(records.tobytes())


main(int(sys.argv[1]), int(sys.argv[2]), *sys.argv[3:6])
