// What a reader meets in a browser, tried in one: tools/docs has Chromium open navegador.html with the list of all pages,
// and reads what this leaves in the document.
//
// Each page is opened in a frame that is as wide as a large screen, then as a phone: it must not have lines too long to read
// in the one, nor scroll sideways in the other; its text must stand out against what is behind it, in light and
// in dark. The search must find what people type, and lead to the right function.
(function () {
    'use strict';
    var fallos = [];
    var hechas = 0;
    var oscuro = matchMedia('(prefers-color-scheme: dark)').matches;

    function falla(texto) { fallos.push(texto); }

    function luminosidad(color) {
        var partes = color.match(/[\d.]+/g).map(Number);
        if (partes.length > 3 && partes[3] === 0) { return null; }
        var lineal = partes.slice(0, 3).map(function (v) {
            v /= 255;
            return v <= 0.04045 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4);
        });
        return 0.2126 * lineal[0] + 0.7152 * lineal[1] + 0.0722 * lineal[2];
    }
    function fondo(ventana, elemento) {
        for (; elemento; elemento = elemento.parentElement) {
            var l = luminosidad(ventana.getComputedStyle(elemento).backgroundColor);
            if (l !== null) { return l; }
        }
        return 1;
    }
    function contraste(ventana, elemento) {
        var a = luminosidad(ventana.getComputedStyle(elemento).color);
        var b = fondo(ventana, elemento);
        return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    }

    // A view is a width, a height, and what looks at the page there.
    function abre(direccion, vistas) {
        var marco = document.createElement('iframe');
        function pon(vista) {
            marco.style.cssText = 'border:0;position:absolute;left:0;top:0;width:' + vista[0] + 'px;height:' + vista[1] + 'px';
        }
        marco.onload = function () {
            vistas.forEach(function (vista) {
                pon(vista);
                try {
                    vista[2](marco.contentWindow, marco.contentDocument);
                } catch (error) {
                    falla(direccion + ': ' + error);
                }
            });
            marco.remove();
            ++hechas;
            siguiente();
        };
        pon(vistas[0]);
        marco.src = direccion;
        document.body.appendChild(marco);
    }

    function en_un_telefono(pagina) {
        return function (ventana, documento) {
            var de_mas = documento.documentElement.scrollWidth - 390;
            if (de_mas > 0) { falla(pagina + ': ' + de_mas + ' pixels too wide for a phone'); }
            if (ventana.getComputedStyle(documento.getElementById('lateral')).display !== 'none') {
                falla(pagina + ': the list of pages covers a phone');
            }
            documento.getElementById('con-menu').click();
            if (ventana.getComputedStyle(documento.getElementById('lateral')).display === 'none') {
                falla(pagina + ': the list of pages does not open');
            }
        };
    }
    function en_una_pantalla(pagina) {
        return function (ventana, documento) {
            documento.querySelectorAll('main p, main li, main td').forEach(function (parrafo) {
                if (parrafo.offsetWidth > 900) { falla(pagina + ': lines of ' + parrafo.offsetWidth + ' pixels'); }
            });
            // Letters one below the other: a column that another one has squeezed.
            documento.querySelectorAll('main td, main p').forEach(function (parrafo) {
                if (parrafo.offsetWidth > 0 && parrafo.offsetWidth < 60 && parrafo.offsetHeight > 150) {
                    falla(pagina + ': "' + parrafo.textContent.trim().slice(0, 30) + '" stands in a column of ' + parrafo.offsetWidth + ' pixels');
                }
            });
            var vistos = {};
            documento.querySelectorAll('main *, #lateral *').forEach(function (elemento) {
                var con_texto = Array.prototype.some.call(elemento.childNodes, function (n) {
                    return n.nodeType === 3 && n.textContent.trim() !== '';
                });
                if (!con_texto || elemento.offsetParent === null) { return; }
                var c = contraste(ventana, elemento);
                var cual = elemento.tagName + '.' + elemento.className;
                if (c < 4.5 && !vistos[cual]) {
                    vistos[cual] = true;
                    falla(pagina + ': ' + cual + ' has a contrast of ' + c.toFixed(2) + (oscuro ? ' in the dark' : ''));
                }
            });
        };
    }
    function buscando(pregunta, esperado) {
        return function (ventana, documento) {
            var enlaces = Array.prototype.map.call(documento.querySelectorAll('#hallazgos a'), function (a) {
                return a.textContent;
            });
            if (!enlaces.some(function (t) { return t.indexOf(esperado) >= 0; })) {
                falla('search for "' + pregunta + '": no ' + esperado + ' among ' + enlaces.length + ' places');
            }
            documento.querySelectorAll('#hallazgos a').forEach(function (a) {
                if (a.href.indexOf('file:') !== 0) { falla('search for "' + pregunta + '" leads to ' + a.href); }
            });
        };
    }

    var pasos = [];
    NAVEGADOR_PAGINAS.forEach(function (pagina) {
        pasos.push(function () {
            abre(pagina, [[2560, 1400, en_una_pantalla(pagina)], [390, 800, en_un_telefono(pagina)]]);
        });
    });
    [['index.html', 'delete', 'cdir_borra_fichero_UNICODE()'], ['index.html', 'delete a tree', 'cdir_borra_directorio_y_subdirectorios'],
        ['index.html', 'borra', 'cdir_borra_fichero_UNICODE()'], ['index.html', 'rename', 'cdir_renombra_fichero_UNICODE()'],
        ['index.html', 'fichero', 'cdir_existe_fichero_UNICODE()'], ['index.html', 'existe', 'cdir_existe_fichero_UNICODE()'],
        ['index.html', 'renam', 'cdir_renombra_fichero_UNICODE()'], ['index.html', 'tempoary file', 'lumodir_creaFicheroTemporal'],
        ['index.html', 'receptor', 'receptor_avisos'], ['index.html', 'recorre', 'recorre()'],
        ['index.html', 'Wine', 'wine_estamos_en_wine()'], ['cpp/annotated.html', 'cadena', 'basic_cadena'],
        ['cpp/annotated.html', 'progress', 'opciones_recorrido'],
        ['index.html', 'qqqqqq', '']].forEach(function (fila) {
        pasos.push(function () {
            abre(fila[0] + '#busca=' + encodeURIComponent(fila[1]), [[1280, 900, fila[2] !== '' ? buscando(fila[1], fila[2])
                : function (ventana, documento) {
                    if (documento.querySelector('#hallazgos a') || documento.getElementById('hallazgos').hidden) {
                        falla('search for nonsense: it finds something, or says nothing');
                    }
                }]]);
        });
    });

    function siguiente() {
        if (pasos.length > 0) {
            pasos.shift()();
            return;
        }
        var informe = document.createElement('pre');
        informe.id = 'informe';
        informe.textContent = (oscuro ? 'dark' : 'light') + ': ' + hechas + ' openings, ' + fallos.length + ' failures\n' +
            fallos.join('\n') + (fallos.length > 0 ? '\n' : '') + 'end of the report';
        document.body.appendChild(informe);
    }
    siguiente();
})();
