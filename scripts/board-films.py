#!/usr/bin/env python3
"""Writes the sample board's fabrication films (examples/designs/*.gbr) from its design file.

    python3 scripts/board-films.py examples/designs/four-layer-board.json examples/designs

Top and bottom copper carry the nets, components and pins as object attributes; the silkscreen
is the top side's legend; the outline is the board's extent."""
import json
import sys


def coord(v):
    return str(int(round(v * 1000000)))


class Film:
    def __init__(self, function, comment):
        self.lines = ["G04 %s*" % comment, "%%TF.FileFunction,%s*%%" % function,
                      "%FSLAX46Y46*%", "%MOMM*%", "G75*", "G01*"]
        self.apertures = {}
        self.attributes = None
        self.function = None

    def aperture(self, template, function=None):
        key = (template, function)
        if key not in self.apertures:
            number = 10 + len(self.apertures)
            if function != self.function:
                self.lines.append("%%TA.AperFunction,%s*%%" % function if function else "%TD.AperFunction*%")
                self.function = function
            self.lines.append("%%ADD%d%s*%%" % (number, template))
            self.apertures[key] = number
        return self.apertures[key]

    def objects(self, attributes):
        if attributes == self.attributes:
            return
        self.lines.append("%TD*%")
        self.function = None
        for a in attributes:
            self.lines.append("%%TO.%s*%%" % a)
        self.attributes = attributes

    def shape(self, shape, attributes, function):
        self.objects(attributes)
        width = shape.get("width", 0.2)
        if "pad" in shape:
            x, y, w, h = shape["pad"]
            self.select(self.aperture("R,%gX%g" % (w, h), function))
            self.lines.append("X%sY%sD03*" % (coord(x), coord(y)))
        elif "circle" in shape:
            x, y, r = shape["circle"]
            hole = "X%g" % shape["hole"] if "hole" in shape else ""
            self.select(self.aperture("C,%g%s" % (2 * r, hole), function))
            self.lines.append("X%sY%sD03*" % (coord(x), coord(y)))
        elif "line" in shape:
            x1, y1, x2, y2 = shape["line"]
            self.select(self.aperture("C,%g" % width, function))
            self.lines += ["X%sY%sD02*" % (coord(x1), coord(y1)), "X%sY%sD01*" % (coord(x2), coord(y2))]
        elif "arc" in shape:
            cx, cy, r, start, end = shape["arc"]
            import math
            self.select(self.aperture("C,%g" % width, function))
            sx, sy = cx + r * math.cos(math.radians(start)), cy + r * math.sin(math.radians(start))
            ex, ey = cx + r * math.cos(math.radians(end)), cy + r * math.sin(math.radians(end))
            self.lines += ["X%sY%sD02*" % (coord(sx), coord(sy)), "G03*",
                           "X%sY%sI%sJ%sD01*" % (coord(ex), coord(ey), coord(cx - sx), coord(cy - sy)),
                           "G01*"]
        elif "polygon" in shape:
            p = shape["polygon"]
            if function != self.function:
                self.lines.append("%%TA.AperFunction,%s*%%" % function)
                self.function = function
            self.lines += ["G36*", "X%sY%sD02*" % (coord(p[0]), coord(p[1]))]
            for i in range(2, len(p), 2):
                self.lines.append("X%sY%sD01*" % (coord(p[i]), coord(p[i + 1])))
            self.lines += ["X%sY%sD01*" % (coord(p[0]), coord(p[1])), "G37*"]
        elif "rect" in shape:
            x1, y1, x2, y2 = shape["rect"]
            self.shape({"polygon": [x1, y1, x2, y1, x2, y2, x1, y2]}, attributes, function)

    def select(self, number):
        if self.lines[-1] != "D%d*" % number:
            self.lines.append("D%d*" % number)

    def text(self):
        return "\n".join(self.lines + ["M02*"]) + "\n"


def copper(board, layer, side, function):
    film = Film("Copper,L%d,%s" % (1 if side == "Top" else 4, side), "%s copper of %s" % (side.lower(), board["name"]))
    net_of = {}
    for net in board["nets"]:
        for pin in net.get("pins", []):
            net_of[pin] = net["name"]
    drill = {}
    for component in board["components"]:
        for part in component.get("shapes", []):
            if part["layer"] == 1 and part["sublayer"] == 3:
                for g in part["geometry"]:
                    drill[component["name"]] = 2 * g["circle"][2]
    for component in board["components"]:
        name = component["name"]
        for part in component.get("shapes", []):
            if part["layer"] == layer and part["sublayer"] in (10, 33):
                for g in part["geometry"]:
                    g = dict(g)
                    if "circle" in g and name in drill:
                        g["hole"] = drill[name]
                    fn = "Conductor" if "polygon" in g else ("ComponentPad" if "hole" in g else "SMDPad,CuDef")
                    film.shape(g, ("C,%s" % name,), fn)
        for pin in component.get("pins", []):
            if pin["layer"] == layer:
                full = "%s.%s" % (name, pin["name"])
                attributes = ("C,%s" % name, "P,%s,%s" % (name, pin["name"]))
                if full in net_of:
                    attributes += ("N,%s" % net_of[full],)
                for g in pin["geometry"]:
                    film.shape(g, attributes, "SMDPad,CuDef")
    for net in board["nets"]:
        for track in net.get("tracks", []):
            if track["layer"] == layer:
                for g in track["geometry"]:
                    film.shape(g, ("N,%s" % net["name"],), "Conductor")
    return film.text()


def silkscreen(board, layer):
    film = Film("Legend,Top", "top silkscreen of %s" % board["name"])
    for component in board["components"]:
        for part in component.get("shapes", []):
            if part["layer"] == layer and part["sublayer"] == 14:
                for g in part["geometry"]:
                    film.shape(g, ("C,%s" % component["name"],), None)
    return film.text()


def outline(board):
    film = Film("Profile,NP", "outline of %s" % board["name"])
    x1, y1, x2, y2 = board["extent"]
    for line in ([x1, y1, x2, y1], [x2, y1, x2, y2], [x2, y2, x1, y2], [x1, y2, x1, y1]):
        film.shape({"line": line, "width": 0.15}, (), "Profile")
    return film.text()


def main():
    board = json.load(open(sys.argv[1]))
    out = sys.argv[2]
    films = {"top-copper.gbr": copper(board, board["top"], "Top", None),
             "bottom-copper.gbr": copper(board, board["bottom"], "Bot", None),
             "silkscreen.gbr": silkscreen(board, board["top"]),
             "outline.gbr": outline(board)}
    for name, text in films.items():
        with open("%s/%s" % (out, name), "w") as f:
            f.write(text)


main()
