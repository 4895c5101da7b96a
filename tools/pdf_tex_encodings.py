"""The encodings built into TeX's fonts and the meaning of their glyphs' names, for generate_pdf_font_tables.py.

Sources: The TeXbook, appendix F (OT1, OML, OMS, OMX); the user's guides of the AMS fonts, of LaTeX's symbol fonts and of
the wasy fonts; "LaTeX font encodings" (T1, TS1). Characters as in the tables of "Unicode mathematical characters and
LaTeX control sequences".
"""

DIGITS = "zero one two three four five six seven eight nine".split()
CAPITALS = [chr(c) for c in range(65, 91)]
SMALL = [chr(c) for c in range(97, 123)]
GREEK = "Gamma Delta Theta Lambda Xi Pi Sigma Upsilon Phi Psi Omega".split()

# --- OT1 -----------------------------------------------------------------------------------------------------------------
OT1_ACCENTS = """dotlessi dotlessj grave acute caron breve macron ring cedilla germandbls ae oe oslash AE OE Oslash""".split()
OT1 = (GREEK + "ff fi fl ffi ffl".split() + OT1_ACCENTS +
       """suppress exclam quotedblright numbersign dollar percent ampersand quoteright parenleft parenright asterisk plus comma
          hyphen period slash""".split() + DIGITS + "colon semicolon exclamdown equal questiondown question at".split() + CAPITALS +
       "bracketleft quotedblleft bracketright circumflex dotaccent quoteleft".split() + SMALL +
       "endash emdash hungarumlaut tilde dieresis".split())


def changed(encoding, changes):
    result = list(encoding)
    for code, name in changes.items():
        result[code] = name
    return result


ITALIC = changed(OT1, {36: "sterling"})
NO_LIGATURES = {11: "arrowup", 12: "arrowdown", 13: "quotesingle", 14: "exclamdown", 15: "questiondown", 60: "less", 62: "greater"}
TYPEWRITER = changed(OT1, NO_LIGATURES | {
    32: "visiblespace", 34: "quotedbl", 92: "backslash", 94: "asciicircum", 95: "underscore", 123: "braceleft", 124: "bar",
    125: "braceright", 126: "asciitilde"})
SMALL_CAPS = changed(OT1, NO_LIGATURES)

# --- OML, OMS, OMX -------------------------------------------------------------------------------------------------------
OML = (GREEK + """alpha beta gamma delta epsilon1 zeta eta theta iota kappa lambda mu nu xi pi rho sigma tau upsilon phi chi psi
                  omega epsilon theta1 pi1 rho1 sigma1 phi1 arrowlefttophalf arrowleftbothalf arrowrighttophalf arrowrightbothalf
                  arrowhookleft arrowhookright triangleright triangleleft""".split() + [digit + "oldstyle" for digit in DIGITS] +
       "period comma less slash greater star partialdiff".split() + CAPITALS +
       "flat natural sharp slurbelow slurabove lscript".split() + SMALL + "dotlessi dotlessj weierstrass vector tie".split())

OMS = ("""minus periodcentered multiply asteriskmath divide diamondmath plusminus minusplus circleplus circleminus circlemultiply
          circledivide circledot circlecopyrt openbullet bullet equivasymptotic equivalence reflexsubset reflexsuperset lessequal
          greaterequal precedesequal followsequal similar approxequal propersubset propersuperset lessmuch greatermuch precedes
          follows arrowleft arrowright arrowup arrowdown arrowboth arrownortheast arrowsoutheast similarequal arrowdblleft
          arrowdblright arrowdblup arrowdbldown arrowdblboth arrownorthwest arrowsouthwest proportional prime infinity element
          owner triangle triangleinv negationslash mapsto universal existential logicalnot emptyset Rfractur Ifractur latticetop
          perpendicular aleph""".split() + CAPITALS +
       """union intersection unionmulti logicaland logicalor turnstileleft turnstileright floorleft floorright ceilingleft
          ceilingright braceleft braceright angbracketleft angbracketright bar bardbl arrowbothv arrowdblbothv backslash
          wreathproduct radical coproduct nabla integral unionsq intersectionsq subsetsqequal supersetsqequal section dagger
          daggerdbl paragraph club diamond heart spade""".split())

FENCES = "parenleft parenright bracketleft bracketright floorleft floorright ceilingleft ceilingright braceleft braceright " \
         "angbracketleft angbracketright".split()
OMX = ([f + "big" for f in FENCES] + "vextendsingle vextenddouble slashbig backslashbig parenleftBig parenrightBig".split() +
       [f + "bigg" for f in FENCES] + "slashbigg backslashbigg".split() +
       [f + "Bigg" for f in FENCES] + "slashBigg backslashBigg slashBig backslashBig".split() +
       """parenlefttp parenrighttp bracketlefttp bracketrighttp bracketleftbt bracketrightbt bracketleftex bracketrightex bracelefttp
          bracerighttp braceleftbt bracerightbt braceleftmid bracerightmid braceex arrowvertex parenleftbt parenrightbt parenleftex
          parenrightex angbracketleftBig angbracketrightBig unionsqtext unionsqdisplay contintegraltext contintegraldisplay
          circledottext circledotdisplay circleplustext circleplusdisplay circlemultiplytext circlemultiplydisplay summationtext
          producttext integraltext uniontext intersectiontext unionmultitext logicalandtext logicalortext summationdisplay
          productdisplay integraldisplay uniondisplay intersectiondisplay unionmultidisplay logicalanddisplay logicalordisplay
          coproducttext coproductdisplay hatwide hatwider hatwidest tildewide tildewider tildewidest bracketleftBig bracketrightBig
          floorleftBig floorrightBig ceilingleftBig ceilingrightBig braceleftBig bracerightBig radicalbig radicalBig radicalbigg
          radicalBigg radicalbt radicalvertex radicaltp arrowvertexdbl arrowtp arrowbt bracehtipdownleft bracehtipdownright
          bracehtipupleft bracehtipupright arrowdbltp arrowdblbt""".split())

# --- names with their characters -----------------------------------------------------------------------------------------
# Names that TeX's fonts use in another sense than the Adobe Glyph List, or that it lacks.
NAMES = {name: chars for name, chars in (pair.split("=") for pair in """
    Delta=0394 Omega=03A9 mu=03BC phi=03D5 phi1=03C6 epsilon1=03F5 rho1=03F1 pi1=03D6 dotlessj=0237 suppress=0337 visiblespace=2423
    arrowlefttophalf=21BC arrowleftbothalf=21BD arrowrighttophalf=21C0 arrowrightbothalf=21C1 arrowhookleft=21AA arrowhookright=21A9
    triangleright=25B7 triangleleft=25C1 star=22C6 flat=266D natural=266E sharp=266F slurbelow=2323 slurabove=2322 lscript=2113
    vector=20D7 tie=2040
    diamondmath=22C4 minusplus=2213 circleminus=2296 circledivide=2298 circledot=2299 circlecopyrt=25CB openbullet=2218
    equivasymptotic=224D precedesequal=2AAF followsequal=2AB0 lessmuch=226A greatermuch=226B precedes=227A follows=227B
    arrownortheast=2197 arrowsoutheast=2198 similarequal=2243 arrownorthwest=2196 arrowsouthwest=2199 owner=220B triangle=25B3
    triangleinv=25BD negationslash=0338 mapsto=21A6 Rfractur=211C Ifractur=2111 latticetop=22A4 unionmulti=228E turnstileleft=22A2
    turnstileright=22A3 floorleft=230A floorright=230B ceilingleft=2308 ceilingright=2309 angbracketleft=27E8 angbracketright=27E9
    prime=2032 bardbl=2016 arrowbothv=2195 arrowdblbothv=21D5 wreathproduct=2240 coproduct=2210 unionsq=2294 intersectionsq=2293
    subsetsqequal=2291 supersetsqequal=2292 emptyset=2205 diamond=2662 heart=2661
    vextendsingle=2223 vextenddouble=2225 parenlefttp=239B parenleftex=239C parenleftbt=239D parenrighttp=239E parenrightex=239F
    parenrightbt=23A0 bracketlefttp=23A1 bracketleftex=23A2 bracketleftbt=23A3 bracketrighttp=23A4 bracketrightex=23A5
    bracketrightbt=23A6 bracelefttp=23A7 braceleftmid=23A8 braceleftbt=23A9 braceex=23AA bracerighttp=23AB bracerightmid=23AC
    bracerightbt=23AD arrowvertex=23D0 contintegral=222E unionsqtext=2A06 unionsqdisplay=2A06 circledottext=2A00
    circledotdisplay=2A00 circleplustext=2A01 circleplusdisplay=2A01 circlemultiplytext=2A02 circlemultiplydisplay=2A02
    summation=2211 product=220F uniontext=22C3 uniondisplay=22C3 intersectiontext=22C2 intersectiondisplay=22C2
    unionmultitext=2A04 unionmultidisplay=2A04 logicalandtext=22C0 logicalanddisplay=22C0 logicalortext=22C1 logicalordisplay=22C1
    hatwide=02C6 hatwider=02C6 hatwidest=02C6 tildewide=02DC tildewider=02DC tildewidest=02DC radicalbt=23B7 radicalvertex=23D0
    radicaltp=250C arrowvertexdbl=2016 arrowtp=2191 arrowbt=2193 arrowdbltp=21D1 arrowdblbt=21D3 bracehtipdownleft=256D
    bracehtipdownright=256E bracehtipupleft=2570 bracehtipupright=256F
    cwm=200C compwordmark=200C Germandbls=0053+0053 SS=0053+0053 ct=0063+0074 st=0073+0074 Ng=014A ng=014B Eng=014A eng=014B
    interrobang=203D interrobangdown=2E18 quotesinglbase=201A Tcedilla=0162 tcedilla=0163 Idotaccent=0130 permyriad=2031
    perthousandzero=0030 ringfitted=02DA ff=FB00 ffi=FB03 ffl=FB04 fj=0066+006A fb=0066+0062 fh=0066+0068 fk=0066+006B
    ffb=0066+0066+0062 ffh=0066+0066+0068 ffj=0066+0066+006A ffk=0066+0066+006B tt=0074+0074 Th=0054+0068 ch=0063+0068
    ck=0063+006B sp=0073+0070 longst=017F+0074 IJ=0132 ij=0133 Lcaron=013D lcaron=013E
    leftarrow=2190 rightarrow=2192 hyphenchar=002D sfthyphen=00AD nbspace=00A0 nonbreakingspace=00A0 nobreakspace=00A0
    nbhyphen=2011 nonbreakinghyphen=2011 softhyphen=00AD zerowidthspace=200B emspace=2003 enspace=2002 thinspace=2009
    figuredash=2012 quoteleftreversed=201B horizontalbar=2015 Dcroat=0110 dcroat=0111 Gcommaaccent=0122
""".split())}

SYMBOLS_A = [pair.split("=") for pair in """
    squaredot=22A1 squareplus=229E squaremultiply=22A0 square=25A1 squaresolid=25A0 squaresmallsolid=25AA diamond=25C7
    diamondsolid=25C6 clockwise=21BB anticlockwise=21BA harpoonleftright=21CC harpoonrightleft=21CB squareminus=229F forces=22A9
    forcesbar=22AA satisfies=22A8 dblarrowheadright=21A0 dblarrowheadleft=219E dblarrowleft=21C7 dblarrowright=21C9 dblarrowup=21C8
    dblarrowdwn=21CA harpoonupright=21BE harpoondownright=21C2 harpoonupleft=21BF harpoondownleft=21C3 arrowtailright=21A3
    arrowtailleft=21A2 arrowparrleftright=21C6 arrowparrrightleft=21C4 shiftleft=21B0 shiftright=21B1 squiggleright=21DD
    squiggleleftright=21AD curlyleft=21AB curlyright=21AC circleequal=2257 followsorequal=227F greaterorsimilar=2273
    greaterorapproxeql=2A86 multimap=22B8 therefore=2234 because=2235 equalsdots=2251 defines=225C precedesorequal=227E
    lessorsimilar=2272 lessorapproxeql=2A85 equalorless=2A95 equalorgreater=2A96 equalorprecedes=22DE equalorfollows=22DF
    precedesorcurly=227C lessdblequal=2266 lessorequalslant=2A7D lessorgreater=2276 primereverse=2035 axisshort=254C
    equaldotrightleft=2253 equaldotleftright=2252 followsorcurly=227D greaterdblequal=2267 greaterorequalslant=2A7E
    greaterorless=2277 squareimage=228F squareoriginal=2290 triangleright=22B3 triangleleft=22B2 trianglerightequal=22B5
    triangleleftequal=22B4 star=2605 between=226C triangledownsld=25BC trianglerightsld=25B6 triangleleftsld=25C0
    arrowaxisright=21E2 arrowaxisleft=21E0 triangle=25B3 trianglesolid=25B2 triangleinv=25BD ringinequal=2256 lessequalgreater=22DA
    greaterlessequal=22DB lessdbleqlgreater=2A8B greaterdbleqlless=2A8C Yen=00A5 arrowtripleright=21DB arrowtripleleft=21DA
    check=2713 orunderscore=22BB nand=22BC perpcorrespond=2A5E angle=2220 measuredangle=2221 sphericalangle=2222 proportional=221D
    smile=2323 frown=2322 subsetdbl=22D0 supersetdbl=22D1 uniondbl=22D3 intersectiondbl=22D2 uprise=22CF downfall=22CE
    multiopenleft=22CB multiopenright=22CC subsetdblequal=2AC5 supersetdblequal=2AC6 difference=224F geomequivalent=224E
    muchless=22D8 muchgreater=22D9 rightanglenw=231C rightanglene=231D circleR=00AE circleS=24C8 fork=22D4 dotplus=2214
    revsimilar=223D revasymptequal=22CD rightanglesw=231E rightanglese=231F maltesecross=2720 complement=2201 intercal=22BA
    circlering=229A circleasterisk=229B circleminus=229D
""".split()]

SYMBOLS_B = [pair.split("=") for pair in """
    lessornotequal=2268 greaterornotequal=2269 notlessequal=2270 notgreaterequal=2271 notless=226E notgreater=226F notprecedes=2280
    notfollows=2281 lessornotdbleql=2268 greaterornotdbleql=2269 notlessorslnteql=2A7D+0338 notgreaterorslnteql=2A7E+0338
    lessnotequal=2A87 greaternotequal=2A88 notprecedesoreql=2AAF+0338 notfollowsoreql=2AB0+0338 precedeornoteqvlnt=22E8
    followornoteqvlnt=22E9 lessornotsimilar=22E6 greaterornotsimilar=22E7 notlessdblequal=2266+0338 notgreaterdblequal=2267+0338
    precedenotslnteql=2AB5 follownotslnteql=2AB6 precedenotdbleqv=2AB9 follownotdbleqv=2ABA lessnotdblequal=2A89
    greaternotdblequal=2A8A notsimilar=2241 notapproxequal=2247 upslope=2571 downslope=2572 notsubsetoreql=228A
    notsupersetoreql=228B notsubsetordbleql=2AC5+0338 notsupersetordbleql=2AC6+0338 subsetornotdbleql=2ACB supersetornotdbleql=2ACC
    subsetornoteql=2ACB supersetornoteql=2ACC subsetnoteql=228A supersetnoteql=228B notsubseteql=2288 notsuperseteql=2289
    notparallel=2226 notbar=2224 notshortbar=2224 notshortparallel=2226 notturnstile=22AC notforces=22AE notsatisfies=22AD
    notforcesextra=22AF nottriangeqlright=22ED nottriangeqlleft=22EC nottriangleleft=22EA nottriangleright=22EB notarrowleft=219A
    notarrowright=219B notdblarrowleft=21CD notdblarrowright=21CF notdblarrowboth=21CE notarrowboth=21AE dividemultiply=22C7
    emptyset=2205 notexistential=2204
    A=0041 B=0042 C=0043 D=0044 E=0045 F=0046 G=0047 H=0048 I=0049 J=004A K=004B L=004C M=004D N=004E O=004F P=0050 Q=0051 R=0052
    S=0053 T=0054 U=0055 V=0056 W=0057 X=0058 Y=0059 Z=005A
    hatwide=02C6 hatwider=02C6 tildewide=02DC tildewider=02DC - Finv=2132 Gmir=2141 - - - - Omegainv=2127 eth=00F0
    equalorsimilar=2242 beth=2136 gimel=2137 daleth=2138 lessdot=22D6 greaterdot=22D7 multicloseleft=22C9 multicloseright=22CA
    barshort=2223 parallelshort=2225 integerdivide=2216 similar=223C approxequal=2248 approxorequal=224A followsorequal=2AB8
    precedesorequal=2AB7 archleftdown=21B6 archrightdown=21B7 Digamma=03DD kappa=03F0 k=006B planckover2pi=210F planckover2pi1=210F
    epsiloninv=03F6
""".split()]

# LaTeX's symbols: their glyphs have numbers for names.
LATEX_SYMBOLS = {1: 0x22B2, 2: 0x22B4, 3: 0x22B3, 4: 0x22B5, 40: 0x02C2, 41: 0x02C3, 42: 0x02C4, 43: 0x02C5, 48: 0x2127,
                 49: 0x22C8, 50: 0x25A1, 51: 0x25C7, 59: 0x21DD, 60: 0x228F, 61: 0x2290}

WASY = [pair.split("=") for pair in """
    APLup=2206 lhd=22B2 unlhd=22B4 rhd=22B3 unrhd=22B5 therefore=2234 recorder=2315 phone=260E checked=2713 pointer=2794 bell=1F514
    eigthnote=266A quarternote=2669 halfnote=1D15E fullnote=1D15D twonotes=266B LHD=25C0 RHD=25B6 lightning=21AF ascnode=260A
    descnode=260B invdiameter=2349 logof=229B aries=2648 invneg=2310 female=2640 male=2642 currency=00A4 clock=1F552 varprop=221D
    varangle=2222 diameter=2300 CIRCLE=25CF rightturn=21BB leftturn=21BA Circle=25CB leftmoon=263D rightmoon=263E earth=2641
    mercury=263F leftarrowhead=02C2 rightarrowhead=02C3 uparrowhead=02C4 downarrowhead=02C5 smiley=263A blacksmiley=263B sun=263C
    frownie=2639 agemO=2127 Bowtie=22C8 Box=25A1 Diamond=25C7 XBox=2612 lozenge=25CA kreuz=2720 hexagon=2B21 octagon=2BC3
    varhexagon=2B21 AC=223F leadsto=21DD sqsubset=228F sqsupset=2290 apprle=2272 apprge=2273 VHF=2307 hexstar=2736 varhexstar=2736
    davidsstar=2721 pentagon=2B20 pentastar=2606 APLdown=2207 LEFTCIRCLE=25D6 RIGHTCIRCLE=25D7 Leftcircle=25D0 Rightcircle=25D1
    UParrow=25B2 DOWNarrow=25BC Paragraph=00B6 Euro=20AC zh=0292 gluonelement=2381 gluonbelement=2381 gluoneelement=2381
    applecmd=2318 longs=017F inve=0259 conjunction=260C opposition=260D jupiter=2643 saturn=2644 uranus=2645 neptun=2646 pluto=2647
    taurus=2649 gemini=264A cancer=264B virgo=264D libra=264E scorpio=264F sagittarius=2650 capricorn=2651 aquarius=2652
    pisces=2653 cent=00A2 permil=2030 thorn=00FE Thorn=00DE dh=00F0 openo=0254 ataribox=2395 APLuparrowbox=2350 APLdownarrowbox=2357
    APLleftarrowbox=2347 APLrightarrowbox=2348 varint=222B iint=222C iiint=222D varoint=222E oiint=222F dispvarint=222B
    dispiint=222C dispiiint=222D dispvaroint=222E dispoiint=222F brokenvert=00A6 APLinput=235E APLbox=2395 APLcomment=235D
""".split()]

# --- T1 and TS1 ----------------------------------------------------------------------------------------------------------
T1 = ("""grave acute circumflex tilde dieresis hungarumlaut ring caron breve macron dotaccent cedilla ogonek quotesinglbase
         guilsinglleft guilsinglright quotedblleft quotedblright quotedblbase guillemotleft guillemotright endash emdash cwm
         perthousandzero dotlessi dotlessj ff fi fl ffi ffl visiblespace exclam quotedbl numbersign dollar percent ampersand
         quoteright parenleft parenright asterisk plus comma hyphen period slash""".split() + DIGITS +
      "colon semicolon less equal greater question at".split() + CAPITALS +
      "bracketleft backslash bracketright asciicircum underscore quoteleft".split() + SMALL +
      """braceleft bar braceright asciitilde hyphen Abreve Aogonek Cacute Ccaron Dcaron Ecaron Eogonek Gbreve Lacute Lcaron Lslash
         Nacute Ncaron Eng Ohungarumlaut Racute Rcaron Sacute Scaron Scedilla Tcaron Tcedilla Uhungarumlaut Uring Ydieresis Zacute
         Zcaron Zdotaccent IJ Idotaccent dcroat section abreve aogonek cacute ccaron dcaron ecaron eogonek gbreve lacute lcaron
         lslash nacute ncaron eng ohungarumlaut racute rcaron sacute scaron scedilla tcaron tcedilla uhungarumlaut uring ydieresis
         zacute zcaron zdotaccent ij exclamdown questiondown sterling Agrave Aacute Acircumflex Atilde Adieresis Aring AE Ccedilla
         Egrave Eacute Ecircumflex Edieresis Igrave Iacute Icircumflex Idieresis Eth Ntilde Ograve Oacute Ocircumflex Otilde
         Odieresis OE Oslash Ugrave Uacute Ucircumflex Udieresis Yacute Thorn Germandbls agrave aacute acircumflex atilde adieresis
         aring ae ccedilla egrave eacute ecircumflex edieresis igrave iacute icircumflex idieresis eth ntilde ograve oacute
         ocircumflex otilde odieresis oe oslash ugrave uacute ucircumflex udieresis yacute thorn germandbls""".split())

TS1 = dict(enumerate(T1[:13])) | {
    13: "quotesinglbase", 18: "quotedblbase", 21: "twelveudash", 22: "threequartersemdash", 24: "arrowleft", 25: "arrowright",
    32: "blank", 36: "dollar", 39: "quotesingle", 42: "asteriskcentered", 44: "comma", 45: "hyphendbl", 46: "period",
    47: "fraction", 60: "angbracketleft", 61: "minus", 62: "angbracketright", 77: "mho", 79: "bigcircle", 87: "ohm",
    91: "dblbracketleft", 93: "dblbracketright", 94: "arrowup", 95: "arrowdown", 96: "asciigrave", 98: "born", 99: "divorced",
    100: "died", 108: "leaf", 109: "married", 110: "musicalnote", 126: "tildelow", 127: "hyphendblchar", 128: "asciibreve",
    129: "asciicaron", 130: "acutedbl", 131: "gravedbl", 132: "dagger", 133: "daggerdbl", 134: "bardbl", 135: "perthousand",
    136: "bullet", 137: "centigrade", 138: "dollaroldstyle", 139: "centoldstyle", 140: "florin", 141: "colonmonetary",
    142: "won", 143: "naira", 144: "guarani", 145: "peso", 146: "lira", 147: "recipe", 148: "interrobang",
    149: "interrobangdown", 150: "dong", 151: "trademark", 152: "permyriad", 153: "pilcrow", 154: "baht", 155: "numero",
    156: "discount", 157: "estimated", 158: "openbullet", 159: "servicemark", 160: "quillbracketleft", 161: "quillbracketright",
    162: "cent", 163: "sterling", 164: "currency", 165: "yen", 166: "brokenbar", 167: "section", 168: "asciidieresis",
    169: "copyright", 170: "ordfeminine", 171: "copyleft", 172: "logicalnot", 173: "circledP", 174: "registered",
    175: "asciimacron", 176: "degree", 177: "plusminus", 178: "twosuperior", 179: "threesuperior", 180: "asciiacute",
    181: "mu", 182: "paragraph", 183: "periodcentered", 184: "referencemark", 185: "onesuperior", 186: "ordmasculine",
    187: "radical", 188: "onequarter", 189: "onehalf", 190: "threequarters", 191: "Euro", 214: "multiply", 246: "divide",
} | {48 + i: digit + "oldstyle" for i, digit in enumerate(DIGITS)}
TS1_NAMES = {name: chars for name, chars in (pair.split("=") for pair in """
    twelveudash=2014 threequartersemdash=2014 blank=2422 asteriskcentered=2217 hyphendbl=2E40 mho=2127 bigcircle=25EF ohm=03A9
    dblbracketleft=27E6 dblbracketright=27E7 asciigrave=0060 born=2605 divorced=26AE died=271D leaf=2767 married=26AD
    musicalnote=266A tildelow=007E hyphendblchar=2E40 asciibreve=02D8 asciicaron=02C7 acutedbl=02DD gravedbl=02F5 centigrade=2103
    naira=20A6 guarani=20B2 peso=20B1 recipe=211E pilcrow=00B6 baht=0E3F numero=2116 discount=2052 servicemark=2120
    quillbracketleft=2045 quillbracketright=2046 asciidieresis=00A8 copyleft=1F12F circledP=2117 asciimacron=00AF asciiacute=00B4
    referencemark=203B
""".split())}


def encodings():
    """By the names of C++: lists of 256 pairs (glyph name, characters or None for those that the name means)."""
    def pairs(names):
        items = names.items() if isinstance(names, dict) else enumerate(names)
        table = [("", None)] * 256
        for code, name in items:
            table[code] = (name, None)
        return table

    def explicit(entries):
        table = [("", None)] * 256
        for code, entry in enumerate(entries):
            if entry != ["-"]:
                table[code] = (entry[0], entry[1])
        return table

    latex = [("", None)] * 256
    for code, char in LATEX_SYMBOLS.items():
        latex[code] = ("", f"{char:04X}")
    return {"TexText": pairs(OT1), "TexItalic": pairs(ITALIC), "TexTypewriter": pairs(TYPEWRITER),
            "TexSmallCaps": pairs(SMALL_CAPS), "TexMathItalic": pairs(OML), "TexMathSymbols": pairs(OMS),
            "TexMathExtension": pairs(OMX), "TexSymbolsA": explicit(SYMBOLS_A), "TexSymbolsB": explicit(SYMBOLS_B),
            "TexLatexSymbols": latex, "TexWasy": explicit(WASY), "TexCork": pairs(T1), "TexCompanion": pairs(TS1)}


def names():
    """All names of TeX's fonts with their characters in hexadecimal, joined by "+"."""
    result = {}
    for source in (dict(e for e in WASY), dict(e for e in SYMBOLS_B if e != ["-"]), dict(SYMBOLS_A), TS1_NAMES, NAMES):
        result |= {name: chars for name, chars in source.items() if len(name) > 1}
    for stem in FENCES + ["slash", "backslash", "radical", "contintegral", "summation", "product", "integral", "coproduct"]:
        for suffix in ("big", "Big", "bigg", "Bigg", "text", "display"):
            result.setdefault(stem + suffix, "@" + stem)
    return result
