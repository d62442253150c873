# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Words of the invented texts: plural nouns, so that German needs no genders."""

from typing import NamedTuple


class Subject(NamedTuple):
    """A part of a topic: its name and nouns in English and in German."""

    topic: str
    english: str
    german: str
    english_nouns: list[str]
    german_nouns: list[str]


TABLE = """
garden | vegetable beds | Gemüsebeete | tomatoes carrots beans seedlings cucumbers pumpkins onions radishes | Tomaten Möhren Bohnen Setzlinge Gurken Kürbisse Zwiebeln Radieschen
garden | fruit trees | Obstbäume | apples pears cherries plums branches blossoms grafts orchards | Äpfel Birnen Kirschen Pflaumen Zweige Blüten Pfropfreiser Obstwiesen
garden | roses | Rosenstöcke | roses thorns petals hedges climbers shrubs aphids trellises | Rosen Dornen Blütenblätter Hecken Kletterpflanzen Sträucher Blattläuse Rankgitter
bees | bee colonies | Bienenvölker | bees hives queens swarms drones combs larvae colonies | Bienen Bienenstöcke Königinnen Schwärme Drohnen Waben Larven Völker
bees | honey | Honigernten | jars flavours extractors harvests strainers labels frames nectars | Gläser Aromen Schleudern Ernten Siebe Etiketten Rähmchen Nektarquellen
bees | meadows | Blühwiesen | clovers wildflowers grasses butterflies bumblebees poppies daisies herbs | Kleearten Wildblumen Gräser Schmetterlinge Hummeln Mohnblumen Gänseblümchen Kräuter
baking | bread | Brote | loaves crusts sourdoughs flours grains yeasts ovens rolls | Laibe Krusten Sauerteige Mehle Körner Hefen Öfen Brötchen
baking | cakes | Kuchen | cakes icings almonds eggs raisins creams layers biscuits | Torten Glasuren Mandeln Eier Rosinen Cremes Böden Kekse
baking | soups | Suppen | soups broths lentils spices leeks potatoes ladles dumplings | Eintöpfe Brühen Linsen Gewürze Lauchstangen Kartoffeln Schöpfkellen Klöße
railways | steam engines | Dampflokomotiven | locomotives boilers pistons whistles tenders firemen chimneys valves | Lokomotiven Kessel Kolben Pfeifen Tender Heizer Schornsteine Ventile
railways | stations | Bahnhöfe | stations platforms timetables tickets passengers clocks waiting-rooms porters | Bahnsteige Fahrpläne Fahrkarten Fahrgäste Bahnhofsuhren Wartesäle Gepäckträger Schalter
railways | tracks | Gleise | rails sleepers switches signals bridges tunnels crossings embankments | Schienen Schwellen Weichen Signale Brücken Tunnel Bahnübergänge Dämme
stars | planets | Planeten | planets moons orbits craters comets asteroids rings eclipses | Monde Umlaufbahnen Krater Kometen Asteroiden Ringe Finsternisse Sternschnuppen
stars | telescopes | Fernrohre | telescopes lenses mirrors eyepieces mounts observatories tripods finders | Linsen Spiegel Okulare Montierungen Sternwarten Stative Sucher Teleskope
stars | galaxies | Galaxien | galaxies nebulae clusters spirals quasars supernovae spectra constellations | Nebel Sternhaufen Spiralarme Quasare Supernovae Spektren Sternbilder Milchstraßen
sailing | boats | Segelboote | hulls keels rudders masts decks cabins anchors moorings | Rümpfe Kiele Ruder Masten Decks Kajüten Anker Liegeplätze
sailing | knots | Seemannsknoten | knots ropes bowlines hitches splices cleats lines pulleys | Knoten Taue Palsteks Schlingen Spleiße Klampen Leinen Rollen
sailing | harbours | Häfen | harbours lighthouses buoys tides ferries quays charts gulls | Leuchttürme Bojen Gezeiten Fähren Kaimauern Seekarten Möwen Molen
music | strings | Streichinstrumente | violins cellos bows violas fiddles scrolls pegs luthiers | Geigen Celli Bögen Bratschen Saiten Stege Wirbel Geigenbauer
music | choirs | Chöre | choirs sopranos altos tenors basses hymns rehearsals conductors | Soprane Altstimmen Tenöre Bässe Lieder Proben Dirigenten Notenblätter
music | organs | Orgeln | organs pipes pedals bellows reedpipes organists keyboards chorales | Pfeifenreihen Pedale Bälge Register Organisten Manuale Choräle Orgelbänke
bicycles | wheels | Laufräder | spokes hubs rims tyres tubes punctures pumps bearings | Speichen Naben Felgen Reifen Schläuche Platten Luftpumpen Kugellager
bicycles | gears | Gangschaltungen | gears chains sprockets derailleurs cranks cables shifters chainrings | Ketten Ritzel Schaltwerke Kurbeln Bowdenzüge Schalthebel Kettenblätter Zahnkränze
bicycles | tours | Radtouren | cyclists panniers campsites hills roadmaps detours signposts helmets | Radfahrer Packtaschen Zeltplätze Hügel Landkarten Umwege Wegweiser Helme
birds | songbirds | Singvögel | blackbirds robins finches sparrows nightingales larks warblers thrushes | Amseln Rotkehlchen Finken Spatzen Nachtigallen Lerchen Grasmücken Drosseln
birds | water birds | Wasservögel | ducks swans herons geese kingfishers storks reeds ponds | Enten Schwäne Reiher Gänse Eisvögel Störche Schilfgürtel Teiche
birds | nests | Vogelnester | nests chicks feathers twigs nestboxes owls fledglings perches | Nester Küken Federn Zweiglein Nistkästen Eulen Jungvögel Sitzstangen
wood | furniture | Möbelstücke | chairs tables drawers cupboards hinges shelves benches cradles | Stühle Tische Schubladen Schränke Scharniere Regale Bänke Wiegen
wood | tools | Werkzeuge | planes saws chisels hammers rasps drills clamps mallets | Hobel Sägen Stechbeitel Hämmer Feilen Bohrer Zwingen Klüpfel
wood | timber | Hölzer | oaks beeches spruces planks knotholes veneers logs varnishes | Eichen Buchen Fichten Bretter Astlöcher Furniere Stämme Lacke
"""


def subjects() -> list[Subject]:
    """All subjects, those of a topic side by side."""
    rows = [line.split(" | ") for line in TABLE.strip().splitlines()]
    return [Subject(row[0], row[1], row[2], row[3].split(), row[4].split()) for row in rows]
