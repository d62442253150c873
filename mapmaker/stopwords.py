# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Words that say nothing about a document's subject."""

from sklearn.feature_extraction.text import ENGLISH_STOP_WORDS

# What nearly every release note says, whatever it is about.
RELEASE_NOTES = """
    accidentally actual actually add added adding additional additions adds adjust adjusted again allow allowed
    allows applied apply archive attempt available avoid based better bits break breaks bug bugs bugfix bugfixes
    bump bumped case cases caused causes change changed changelog changes changing check clean cleanup closes
    close comment comments commit complete compat control copy correct corrected correctly cosmetic current
    currently deb debhelper debian debs default depend dependencies dependency depends description descriptions
    details did directly directory does doesn don drop dropped drops due enable enabled ensure entry error errors
    essential existing exist experimental explicit explicitly feature features field fields file files final
    fix fixed fixes fixing following forgot forward git github handle handling homepage html http https
    improve improved improvements include included includes including initial install installed installs instead
    issue issues just latest like line list longer maintainer maintainers major make makes making mark merge merged
    message minor missing modify move moved moves multiple name names necessary need needed needs new nmu
    non note obsolete old open option options order orig original package packages packaging pass patch patched
    patches point possible prevent previous problem problems proper properly provide provided provides pull
    recent reason rebuild recommends refresh refreshed reintroduce related release released releases remove removed
    removes removing rename renamed replace replaced replaces report reported request require required requires
    restore revert reverted rules run running salsa set sets setting several shipped ships short sid simplify
    small snapshot sorry source sources specific specify split standards stable standard stop suggest suggested
    suggestion suggests support supported supports switch synced tag tarball target team thanks thank time tree
    trivial try typo typos ubuntu unneeded unnecessary unreleased unstable unused update updated updates updating
    upgrade upload uploaded uploaders upstream urgency use used useful user uses using various vcs version versions
    versioned want warning warnings watch way wheezy woody work working works wrong year
    jessie squeeze stretch buster bullseye bookworm lenny etch sarge potato slink trixie lintian policy
    build builds building built standards-version dev dep level import imported page base taken usr share build-depends
    build-dep build-depend non-maintainer debhelper-compat rules-requires-root candidate routine-update
    salsa.debian.org vcs-browser vcs-git override overrides disable trunk mark format readable diff
    january february march april may june july august september october november december
    monday tuesday wednesday thursday friday saturday sunday
"""

GERMAN = """
    aber alle allem allen aller alles als also am an ander andere auch auf aus bei beim bin bis damit dann das dass
    dein dem den denn der des dessen die dies diese diesem diesen dieser dieses doch dort durch ein eine einem einen
    einer eines einige einmal er es etwas euer für gegen gewesen hab habe haben hat hatte hatten hier hin hinter ich
    ihm ihn ihr ihre ihrem ihren im immer in ins ist jede jedem jeden jeder jedes jetzt kann kein keine können machen
    man manche mehr mein mich mir mit muss nach nicht nichts noch nun nur ob oder ohne sehr sein seine seinem seinen
    sich sie sind so solche soll sollte sondern sonst über um und uns unser unter viel vom von vor war waren warum
    was weil weiter welche wenn wer werde werden wie wieder will wir wird wirst wo wollen während würde würden zu
    zum zur zwar zwischen
"""

STOP_WORDS = frozenset(ENGLISH_STOP_WORDS) | frozenset(RELEASE_NOTES.split()) | frozenset(GERMAN.split())
