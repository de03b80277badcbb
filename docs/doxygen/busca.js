// The search over all pages, from files alone: indice.js (made with them) holds the texts, lunr the method.
// Words are found in English prose and in the Spanish names, whose parts are words ("borra" finds
// cdir_borra_fichero); what begins with a word is found too, and a slip of one letter where nothing else is.
(function () {
    'use strict';
    var formulario = document.getElementById('busca');
    var entrada = formulario.elements.q;
    var lista = document.getElementById('hallazgos');
    var raiz = formulario.dataset.raiz;
    var indice = null;

    function construye() {
        lunr.tokenizer.separator = /[\s\-_.,:;()<>[\]\/\\*"'`|]+/;
        return lunr(function () {
            // The Spanish names are no English words: they are found as they are, too.
            this.pipeline.remove(lunr.stopWordFilter);
            this.searchPipeline.remove(lunr.stemmer);
            this.ref('i');
            this.field('t', {boost: 8});
            this.field('x');
            LUMODIR_PAGINAS.forEach(function (pagina, i) {
                this.add({i: i, t: pagina.t, x: pagina.x});
            }, this);
        });
    }

    function palabras(texto) {
        return texto.toLowerCase().split(lunr.tokenizer.separator).filter(function (p) { return p !== ''; });
    }

    function busca(texto) {
        indice = indice || construye();
        var todas = palabras(texto);
        function con(presencia, errores) {
            return indice.query(function (consulta) {
                todas.forEach(function (palabra) {
                    var raiz = lunr.stemmer(new lunr.Token(palabra)).toString();
                    var corta = raiz.length < palabra.length ? raiz : palabra;
                    // With a wildcard it finds the word, its forms and what begins with it.
                    consulta.term(errores ? raiz : corta, errores
                        ? {editDistance: palabra.length > 3 ? 1 : 0, presence: presencia}
                        : {wildcard: lunr.Query.wildcard.TRAILING, presence: presencia});
                    consulta.term(palabra, {boost: 6});
                });
            });
        }
        if (todas.length === 0) {
            return [];
        }
        // Every word; every word, one letter of which may be wrong; any of them.
        var presencia = lunr.Query.presence;
        return [[presencia.REQUIRED, false], [presencia.REQUIRED, true], [presencia.OPTIONAL, false]].reduce(
            function (hallados, como) { return hallados.length > 0 ? hallados : con(como[0], como[1]); }, []);
    }

    // The sentence around the first word that is in the text.
    function trozo(pagina, texto) {
        var minusculas = pagina.x.toLowerCase();
        var donde = -1;
        palabras(texto).forEach(function (palabra) {
            var aqui = minusculas.indexOf(palabra.slice(0, Math.max(4, palabra.length - 3)));
            if (aqui >= 0 && (donde < 0 || aqui < donde)) {
                donde = aqui;
            }
        });
        var desde = Math.max(0, donde - 60);
        return (desde > 0 ? '… ' : '') + pagina.x.slice(desde, desde + 200) + (pagina.x.length > desde + 200 ? ' …' : '');
    }

    function muestra() {
        var texto = entrada.value.trim();
        lista.textContent = '';
        lista.hidden = texto === '';
        if (lista.hidden) {
            return;
        }
        var hallados = busca(texto);
        var titulo = document.createElement('p');
        titulo.textContent = hallados.length === 0 ? 'Nothing found for "' + texto + '"'
            : hallados.length + (hallados.length === 1 ? ' place' : ' places') + ' for "' + texto + '"';
        lista.appendChild(titulo);
        hallados.slice(0, 60).forEach(function (hallado) {
            var pagina = LUMODIR_PAGINAS[Number(hallado.ref)];
            var enlace = document.createElement('a');
            enlace.href = raiz + pagina.u;
            var nombre = document.createElement('b');
            nombre.textContent = pagina.t;
            var resumen = document.createElement('span');
            resumen.textContent = trozo(pagina, texto);
            enlace.append(nombre, resumen);
            lista.appendChild(enlace);
        });
        window.scrollTo(0, 0);
    }

    // From another page: #busca=delete in the address.
    function de_la_direccion() {
        var dicho = /^#busca=(.+)/.exec(location.hash);
        if (dicho) {
            entrada.value = decodeURIComponent(dicho[1]);
            muestra();
        }
    }

    formulario.addEventListener('submit', function (suceso) {
        suceso.preventDefault();
        muestra();
    });
    entrada.addEventListener('input', muestra);
    lista.addEventListener('click', function () {
        lista.hidden = true;
        document.getElementById('con-menu').checked = false;
    });
    window.addEventListener('hashchange', de_la_direccion);
    document.addEventListener('keydown', function (suceso) {
        if (suceso.key === '/' && !/^(INPUT|TEXTAREA)$/.test(document.activeElement.tagName)) {
            suceso.preventDefault();
            entrada.focus();
        } else if (suceso.key === 'Escape') {
            entrada.value = '';
            muestra();
        }
    });
    // The page that is shown, among those of the list.
    document.querySelectorAll('#lateral a').forEach(function (enlace) {
        if (enlace.href === location.href.split('#')[0]) {
            enlace.setAttribute('aria-current', 'page');
        }
    });
    de_la_direccion();
})();
